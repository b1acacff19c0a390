# sondrel_add_test(<folder>.<unit> SOURCES <file>... [LIBRARIES <target>...] [TIMEOUT <seconds>] [SUPPORT <target>])
#
# Adds one GoogleTest executable as the CTest <folder>.<unit>; it links libraries and recompiles none of their
# sources. Test classes with Q_OBJECT belong in a test support library: executables are built without moc.
function(sondrel_add_test name)
    cmake_parse_arguments(arg "" "SUPPORT;TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
    if(NOT arg_SUPPORT)
        set(arg_SUPPORT sondrel_test_support)
    endif()
    string(REPLACE "." "_" target "test_${name}")
    add_executable(${target} ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${target} PRIVATE ${arg_SUPPORT} ${arg_LIBRARIES})
    # A precompiled header fits only where the compiler is called the same way.
    list(REMOVE_ITEM arg_LIBRARIES sondrel_failing_allocation)
    if(SONDREL_PCH AND NOT arg_LIBRARIES)
        target_precompile_headers(${target} REUSE_FROM ${arg_SUPPORT})
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_test(NAME ${name} COMMAND ${target})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
        TIMEOUT ${arg_TIMEOUT}
    )
endfunction()

# sondrel_add_window_test(...): the same for tests that build windows, on the offscreen platform.
function(sondrel_add_window_test name)
    sondrel_add_test(${name} ${ARGN} SUPPORT sondrel_window_test_support)
endfunction()
