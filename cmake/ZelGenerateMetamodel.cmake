# zel_generate_metamodel(TARGET target DEFINITION file.yaml NAMESPACE name EXPORT_MACRO macro
#                        [DEPENDS file.yaml...] [OUTPUT_DIR dir] [UNITS count])
#
# Generates the classes of a metamodel at build time and compiles them into TARGET, which must be made in the directory
# of the call.
#
#   DEFINITION    the metamodel's definition.
#   NAMESPACE     the C++ namespace of the classes and the first part of the names of all generated files.
#   EXPORT_MACRO  the macro before each generated class that makes it visible outside of TARGET.
#   DEPENDS       definitions that DEFINITION builds on. The built-in one need not be named.
#   OUTPUT_DIR    the include root that the generator writes to and that nothing else uses, by default
#                 `generated/NAMESPACE` in the build directory of the call. It becomes a public include directory of
#                 TARGET.
#   UNITS         into how many sources the classes are gathered, 16 by default: more units build in parallel and
#                 rebuild less after a change, fewer build faster from nothing.
#
# The names of the per-class files are known to the generator alone. The first build orders all compilation of TARGET
# and of its users behind the generator and then writes a list of what was made; a later configuration reads the list,
# so that the build tool watches each file and a changed property rebuilds only what includes its class. The target
# property ZEL_GENERATED_HEADERS holds the headers of that list.
set(_ZEL_LIST_GENERATED_FILES ${CMAKE_CURRENT_LIST_DIR}/ZelListGeneratedFiles.cmake)

function(zel_generate_metamodel)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;DEFINITION;NAMESPACE;EXPORT_MACRO;OUTPUT_DIR;UNITS" "DEPENDS")
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "zel_generate_metamodel: unknown argument '${arg_UNPARSED_ARGUMENTS}'")
    endif()
    foreach(name IN ITEMS TARGET DEFINITION NAMESPACE EXPORT_MACRO)
        if(NOT arg_${name})
            message(FATAL_ERROR "zel_generate_metamodel: ${name} is missing")
        endif()
    endforeach()
    if(NOT TARGET ${arg_TARGET})
        message(FATAL_ERROR "zel_generate_metamodel: found no target '${arg_TARGET}'")
    endif()
    get_target_property(target_dir ${arg_TARGET} SOURCE_DIR)
    if(NOT target_dir STREQUAL CMAKE_CURRENT_SOURCE_DIR)
        message(FATAL_ERROR
            "zel_generate_metamodel: '${arg_TARGET}' is made in ${target_dir}, expected a target of this directory")
    endif()
    string(REPLACE "::" "_" prefix ${arg_NAMESPACE})
    if(NOT arg_OUTPUT_DIR)
        set(arg_OUTPUT_DIR generated/${prefix})
    endif()
    if(NOT arg_UNITS)
        set(arg_UNITS 16)
    endif()
    cmake_path(ABSOLUTE_PATH arg_DEFINITION NORMALIZE)
    cmake_path(ABSOLUTE_PATH arg_OUTPUT_DIR BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE)

    set(definitions)
    foreach(definition IN LISTS ZEL_METAMODEL_DEFINITION arg_DEPENDS)
        cmake_path(ABSOLUTE_PATH definition NORMALIZE)
        if(NOT definition STREQUAL arg_DEFINITION)
            list(APPEND definitions ${definition})
        endif()
    endforeach()
    list(REMOVE_DUPLICATES definitions)
    list(TRANSFORM definitions PREPEND "--depends;" OUTPUT_VARIABLE depends)

    set(units ${arg_OUTPUT_DIR}/${prefix}_bootstrap.cpp)
    foreach(index RANGE 1 ${arg_UNITS})
        list(APPEND units ${arg_OUTPUT_DIR}/${prefix}_family_${index}.cpp)
    endforeach()

    set(made_list ${arg_OUTPUT_DIR}/${prefix}.files)
    if(NOT EXISTS ${made_list})
        file(WRITE ${made_list} "")
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${made_list})
    file(STRINGS ${made_list} made)
    list(TRANSFORM made PREPEND ${arg_OUTPUT_DIR}/)
    list(REMOVE_ITEM made ${units})
    set(headers ${made})
    list(FILTER headers INCLUDE REGEX "\\.h$")

    set(stamp ${arg_OUTPUT_DIR}/${prefix}.stamp)
    add_custom_command(OUTPUT ${stamp} BYPRODUCTS ${units} ${made}
        COMMAND zel::zelgen ${arg_DEFINITION} --out ${arg_OUTPUT_DIR} --units ${arg_UNITS} ${depends}
            --namespace ${arg_NAMESPACE} --export-macro ${arg_EXPORT_MACRO}
            --depfile ${stamp}.d --depfile-target ${stamp}
        COMMAND ${CMAKE_COMMAND} -D ROOT=${arg_OUTPUT_DIR} -D LIST=${made_list} -P ${_ZEL_LIST_GENERATED_FILES}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS zel::zelgen ${arg_DEFINITION} ${definitions}
        DEPFILE ${stamp}.d # the parts of the definitions
        COMMENT "Generating the metamodel ${arg_NAMESPACE}"
        VERBATIM)

    target_sources(${arg_TARGET} PRIVATE ${stamp} ${units})
    target_include_directories(${arg_TARGET} PUBLIC $<BUILD_INTERFACE:${arg_OUTPUT_DIR}>)
    set_property(TARGET ${arg_TARGET} APPEND PROPERTY ZEL_GENERATED_HEADERS ${headers})
endfunction()
