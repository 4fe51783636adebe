# zel_set_warnings(TARGET...) gives targets of this project the one set of warnings that it is kept free of.
# ZEL_WARNINGS_AS_ERRORS, which the development presets set, makes each of them an error.
function(zel_set_warnings)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor
            # g++ 12 sees overlaps in `std::string` at -O3 that are not there.
            $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
        set_target_properties(${target} PROPERTIES COMPILE_WARNING_AS_ERROR ${ZEL_WARNINGS_AS_ERRORS})
    endforeach()
endfunction()
