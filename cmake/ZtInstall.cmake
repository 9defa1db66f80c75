# The installed copy: libraries, tools, headers, a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

get_property(libraries GLOBAL PROPERTY ZT_LIBRARIES)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/ztbr64v5")

install(TARGETS ${libraries} EXPORT ztbr64v5Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
foreach(folder zt platform sibling)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}"
          DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ztbr64v5"
          FILES_MATCHING PATTERN "*.h" PATTERN "*_test.h" EXCLUDE PATTERN "detail" EXCLUDE)
endforeach()
install(EXPORT ztbr64v5Targets NAMESPACE ZT:: DESTINATION "${package_dir}")

configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/ztbr64v5Config.cmake.in"
  "${PROJECT_BINARY_DIR}/ztbr64v5Config.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ztbr64v5ConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/ztbr64v5Config.cmake"
              "${PROJECT_BINARY_DIR}/ztbr64v5ConfigVersion.cmake"
              "${CMAKE_CURRENT_LIST_DIR}/ZtResources.cmake"
        DESTINATION "${package_dir}")

configure_file("${CMAKE_CURRENT_LIST_DIR}/ztbr64v5.pc.in"
               "${PROJECT_BINARY_DIR}/ztbr64v5.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/ztbr64v5.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
