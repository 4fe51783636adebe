# What a package of the library holds, and how a user's build finds it: find_package(zel) or pkg-config zel.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zel)
set(data_dir ${CMAKE_INSTALL_DATADIR}/zel)

install(TARGETS zel zel-uml zel-interchange zel-compare zelgen zel-cli EXPORT zelTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET host_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET generated_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# Modules, which nobody links with.
install(TARGETS zel-cli-uml zel-unpacking LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/zel)
# After a first build the set of generated headers is not known yet; the folder is.
install(DIRECTORY ${PROJECT_BINARY_DIR}/generated/ZEL DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
foreach(metamodel IN LISTS ZEL_UML_METAMODELS)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/metamodels/uml/generated/${metamodel}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN *.h)
endforeach()
install(DIRECTORY ${PROJECT_BINARY_DIR}/interchange/generated/Foreign/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN *.h)
install(FILES ${ZEL_METAMODEL_DEFINITION} DESTINATION ${data_dir})
install(DIRECTORY metamodels/uml DESTINATION ${data_dir} FILES_MATCHING PATTERN *.yaml)
install(DIRECTORY ${ZEL_LIBRARIES_FOLDER} DESTINATION ${data_dir})
# Printers for gdb, beside the library.
install(FILES ${ZEL_GDB_PRINTERS} DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT zelTargets NAMESPACE zel:: DESTINATION ${package_dir})

configure_package_config_file(cmake/zelConfig.cmake.in ${PROJECT_BINARY_DIR}/zelConfig.cmake
    INSTALL_DESTINATION ${package_dir} PATH_VARS data_dir NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
        ${PROJECT_BINARY_DIR}/zelConfig.cmake
        ${PROJECT_BINARY_DIR}/zelConfigVersion.cmake
        cmake/ZelGenerateMetamodel.cmake
        cmake/ZelListGeneratedFiles.cmake
    DESTINATION ${package_dir})

file(RELATIVE_PATH pc_to_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_to_prefix ${pc_to_prefix})
configure_file(cmake/zel.pc.in ${PROJECT_BINARY_DIR}/zel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
