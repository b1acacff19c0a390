# sondrel_add_test(<folder>.<unit> SOURCES <file>... [LIBRARIES <target>...] [TIMEOUT <seconds>])
#
# Adds one GoogleTest executable as the CTest <folder>.<unit>; it links libraries and recompiles none of their
# sources. Test classes with Q_OBJECT belong in a test support library: executables are built without moc.
function(sondrel_add_test name)
    cmake_parse_arguments(arg "" "TIMEOUT" "SOURCES;LIBRARIES" ${ARGN})
    string(REPLACE "." "_" target "test_${name}")
    add_executable(${target} ${arg_SOURCES})
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_link_libraries(${target} PRIVATE sondrel_test_support ${arg_LIBRARIES})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_test(NAME ${name} COMMAND ${target})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8"
        TIMEOUT ${arg_TIMEOUT}
    )
endfunction()
