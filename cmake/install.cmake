# find_package(TarnPlanView), with Qt 6 find_package(TarnPlanView-qt6), for hosts: the plug-in, its exported headers and
# the declarations of the host's libraries.
include(CMakePackageConfigHelpers)
set(package TarnPlanView${TARN_QT_SUFFIX})
set(host_include ${CMAKE_INSTALL_INCLUDEDIR}/TarnPlanViewHost${TARN_QT_SUFFIX})
install(TARGETS TarnPlanView tarn_host_api EXPORT TarnPlanViewTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  COMPONENT plugin NAMELINK_COMPONENT development)
install(FILES ${TARN_PUBLIC_INCLUDE}/TarnPlanView/tarn_plan_view_export.h
  DESTINATION ${TARN_INSTALLED_INCLUDE}/TarnPlanView COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/ DESTINATION ${host_include}
  COMPONENT development FILES_MATCHING PATTERN "*.h")
if(TARN_BUILD_HOSTKIT)
  install(TARGETS TarnHost EXPORT TarnPlanViewTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT host NAMELINK_COMPONENT development)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/hostkit/public/ DESTINATION ${host_include}
    COMPONENT development)
endif()
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${package})
install(EXPORT TarnPlanViewTargets NAMESPACE TarnPlanView:: DESTINATION ${config_dir}
  COMPONENT development)
set(plain_controls ${CMAKE_INSTALL_DATADIR}/tarnplanview${TARN_QT_SUFFIX}/plain_controls)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/plain_controls/ DESTINATION ${plain_controls} COMPONENT development)
# By the interface's number, as the library itself, so that the next one can be installed beside it.
set(translations ${CMAKE_INSTALL_DATADIR}/tarnplanview${TARN_QT_SUFFIX}/translations/${TARN_INTERFACE_VERSION})
install(FILES ${TARN_CATALOGUES} DESTINATION ${translations} COMPONENT plugin)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/TarnPlanViewConfig.cmake.in
  ${PROJECT_BINARY_DIR}/${package}Config.cmake INSTALL_DESTINATION ${config_dir}
  PATH_VARS plain_controls translations)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/${package}Config.cmake ${PROJECT_BINARY_DIR}/${package}ConfigVersion.cmake
  DESTINATION ${config_dir} COMPONENT development)
