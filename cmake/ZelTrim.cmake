# zel_trim_library(TARGET) leaves out of a shared library what nothing in it reaches and its users cannot name.
#
# Most of that are construction vtables, by which the shared bases of a class are called while an object of it is made or
# destroyed. The linker keeps those of a class as long as its table of them is exported, so these tables are not.
set(_ZEL_EXPORTS ${CMAKE_CURRENT_LIST_DIR}/exports.map)

function(zel_trim_library target)
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
    target_link_options(${target} PRIVATE -Wl,--gc-sections -Wl,--version-script=${_ZEL_EXPORTS})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${_ZEL_EXPORTS})
endfunction()
