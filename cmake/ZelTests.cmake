include(GoogleTest)

# zel_add_tests(NAME SOURCES file... [LIBRARIES target...] [DEFINITIONS name=value...] [PRECOMPILED header...])
#
# Declares one GoogleTest executable. Its tests are called NAME.Suite.Case in ctest and carry the label NAME; those of
# suites whose names end in `Long` carry the label `long` instead, so that the everyday run can leave them out.
# What most of the sources include is PRECOMPILED.
function(zel_add_tests name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;DEFINITIONS;PRECOMPILED")
    if(arg_UNPARSED_ARGUMENTS OR NOT arg_SOURCES)
        message(FATAL_ERROR
            "zel_add_tests(${name}): found '${arg_UNPARSED_ARGUMENTS}', expected SOURCES, LIBRARIES, DEFINITIONS, PRECOMPILED")
    endif()

    set(target ${name}-tests)
    add_executable(${target} ${arg_SOURCES})
    target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} GTest::gmock_main)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${target} PRIVATE ${arg_DEFINITIONS})
    zel_set_warnings(${target})
    zel_precompile(${target} ${arg_PRECOMPILED})

    gtest_discover_tests(${target} TEST_PREFIX ${name}. TEST_FILTER "-*Long.*:*Long/*"
        DISCOVERY_TIMEOUT 60 PROPERTIES LABELS ${name} TIMEOUT 300)
    gtest_discover_tests(${target} TEST_PREFIX ${name}. TEST_FILTER "*Long.*:*Long/*" TEST_LIST ${target}_LONG
        DISCOVERY_TIMEOUT 60 PROPERTIES LABELS long TIMEOUT 3600)
endfunction()
