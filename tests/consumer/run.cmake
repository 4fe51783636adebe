# Installs the build in BUILD_DIR into a folder of its own, then configures, builds and runs the projects beside this
# file against the installed package, as a user far away from the build tree would. COMPILER and FLAGS are those of the
# build, so that a sanitized library meets a sanitized user.
set(work ${BUILD_DIR}/consumer)
set(prefix ${work}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The guide shows the definitions and the builds of these projects as they are.
file(READ ${SOURCE_DIR}/docs/guide/your-own-metamodel.md guide)
foreach(name IN ITEMS recipes.metamodel.yaml CMakeLists.txt uml/reviews.metamodel.yaml uml/CMakeLists.txt)
    file(READ ${CMAKE_CURRENT_LIST_DIR}/${name} text)
    string(REGEX REPLACE "^(#[^\n]*\n)+" "" text "${text}")
    string(FIND "${guide}" "${text}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "docs/guide/your-own-metamodel.md: found no text like that of tests/consumer/${name}")
    endif()
endforeach()

file(REMOVE_RECURSE ${work})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

file(GLOB_RECURSE package_files ${prefix}/*.cmake ${prefix}/*.pc ${prefix}/*.h ${prefix}/*.yaml)
foreach(file IN LISTS package_files)
    file(READ ${file} text)
    foreach(directory IN ITEMS ${BUILD_DIR} ${SOURCE_DIR})
        string(FIND "${text}" "${directory}/" place)
        if(NOT place EQUAL -1)
            message(FATAL_ERROR "${file}: found a path of the build, '${directory}', expected none")
        endif()
    endforeach()
endforeach()

function(build_and_run source program)
    set(build ${work}/build/${program})
    run(${CMAKE_COMMAND} -G Ninja -S ${source} -B ${build} -D CMAKE_PREFIX_PATH=${prefix}
        -D CMAKE_CXX_COMPILER=${COMPILER} -D CMAKE_CXX_FLAGS=${FLAGS})
    run(${CMAKE_COMMAND} --build ${build})
    run(${build}/${program} ${work})
endfunction()

build_and_run(${CMAKE_CURRENT_LIST_DIR} consumer)
build_and_run(${CMAKE_CURRENT_LIST_DIR}/uml reviews)
