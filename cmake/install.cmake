# find_package(TarnPlanView) for hosts: the plug-in, its exported headers and the declarations of the host's libraries.
include(CMakePackageConfigHelpers)
install(TARGETS TarnPlanView tarn_host_api EXPORT TarnPlanViewTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${TARN_PUBLIC_INCLUDE}/TarnPlanView/tarn_plan_view_export.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TarnPlanView)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TarnPlanViewHost
  FILES_MATCHING PATTERN "*.h")
if(TARN_BUILD_HOSTKIT)
  install(TARGETS TarnHost EXPORT TarnPlanViewTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/hostkit/public/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TarnPlanViewHost)
endif()
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TarnPlanView)
install(EXPORT TarnPlanViewTargets NAMESPACE TarnPlanView:: DESTINATION ${config_dir})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TarnPlanViewConfig.cmake.in
  ${PROJECT_BINARY_DIR}/TarnPlanViewConfig.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TarnPlanViewConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TarnPlanViewConfig.cmake ${PROJECT_BINARY_DIR}/TarnPlanViewConfigVersion.cmake
  DESTINATION ${config_dir})
