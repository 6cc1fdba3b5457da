# Installation: libraries, headers, CMake package files and a pkg-config file.
include(CMakePackageConfigHelpers)

set(ZQ_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZQCore)

install(TARGETS zqcore zqwmpi EXPORT ZQCoreTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zqcore ${PROJECT_BINARY_DIR}/include/zqcore
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(EXPORT ZQCoreTargets NAMESPACE ZQCore:: DESTINATION ${ZQ_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZQCoreConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZQCoreConfig.cmake INSTALL_DESTINATION ${ZQ_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZQCoreConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZQCoreConfig.cmake ${PROJECT_BINARY_DIR}/ZQCoreConfigVersion.cmake
  DESTINATION ${ZQ_CMAKE_DIR})

configure_file(${PROJECT_SOURCE_DIR}/cmake/zqcore.pc.in ${PROJECT_BINARY_DIR}/zqcore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zqcore.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
