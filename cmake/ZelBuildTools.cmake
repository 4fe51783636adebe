# A compiler cache and a fast linker, when the machine has them and the user chose none.

if(NOT PROJECT_IS_TOP_LEVEL)
    return()
endif()

if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(ZEL_CCACHE ccache)
    if(ZEL_CCACHE)
        # The cache takes a precompiled header for what it is made of if it is allowed to.
        set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZEL_CCACHE})
    endif()
endif()

include(CheckLinkerFlag)
foreach(linker IN ITEMS mold lld)
    check_linker_flag(CXX -fuse-ld=${linker} ZEL_HAS_LINKER_${linker})
    if(ZEL_HAS_LINKER_${linker})
        add_link_options(-fuse-ld=${linker})
        set(ZEL_LINKER ${linker})
        break()
    endif()
endforeach()
