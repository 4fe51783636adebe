# zel_trim_library(TARGET EXPORTS) leaves out of a shared library what nothing in it reaches and its users cannot name.
# EXPORTS is a version script that says what of the names that are visible by themselves is not exported.
#
# Most of what goes are construction vtables, by which the shared bases of a class are called while an object of it is
# made or destroyed. The linker keeps those of a class as long as the table of them is exported.
function(zel_trim_library target exports)
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
    target_link_options(${target} PRIVATE -Wl,--gc-sections -Wl,--version-script=${exports})
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${exports})
endfunction()

# zel_fold_equal_functions(TARGET) keeps one of all functions of a shared library that are equal to the byte, where the
# linker can. For libraries in which no function is told from another by its address.
function(zel_fold_equal_functions target)
    if(ZEL_LINKER)
        target_link_options(${target} PRIVATE -Wl,--icf=all)
    endif()
endfunction()
