# zel_precompile(TARGET header...) compiles once for all sources of the target what most of them include, which saves a
# third of the time of building them. A source still includes all that it uses: the preset `clang` builds without.
function(zel_precompile target)
    if(ZEL_PRECOMPILED_HEADERS AND ARGN)
        target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
endfunction()
