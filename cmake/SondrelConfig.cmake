# One interface target carries the language level, the warnings and the Qt definitions.
add_library(sondrel_config INTERFACE)
target_include_directories(sondrel_config INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_features(sondrel_config INTERFACE cxx_std_20)
target_compile_definitions(sondrel_config INTERFACE
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
    QT_NO_KEYWORDS
)
target_compile_options(sondrel_config INTERFACE
    -Wall
    -Wextra
    -Wold-style-cast
    -Woverloaded-virtual
    -Wnon-virtual-dtor
    $<$<BOOL:${SONDREL_WERROR}>:-Werror>
)
# What Debian hardens its programs with, since pages of strangers go through this one; position independent it is
# anyway. A debug build is not optimized, which the checked functions of the C library need.
set(released "$<CONFIG:Release>")
target_compile_options(sondrel_config INTERFACE
    "$<${released}:-fstack-protector-strong;-Werror=format-security;-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>"
)
target_link_options(sondrel_config INTERFACE "$<${released}:LINKER:-z,relro;LINKER:-z,now>")
if(SONDREL_SANITIZE)
    target_compile_options(sondrel_config INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(sondrel_config INTERFACE -fsanitize=address,undefined)
endif()
if(SONDREL_FUZZ)
    # Only the fuzz targets link the fuzzer's own main().
    target_compile_options(sondrel_config INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(sondrel_config INTERFACE -fsanitize=address,undefined)
endif()
