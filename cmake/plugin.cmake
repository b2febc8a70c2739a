# The plug-in: one object library a layer, each seeing only the layers before it, joined into libTarnPlanView.so.
include(GenerateExportHeader)
set(TARN_PUBLIC_INCLUDE ${PROJECT_BINARY_DIR}/include)
set(TARN_PLUGIN_LAYERS)

add_library(TarnPlanView SHARED)
add_library(TarnPlanView::TarnPlanView ALIAS TarnPlanView)
set_target_properties(TarnPlanView PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 1)
generate_export_header(TarnPlanView EXPORT_MACRO_NAME TARNPLANVIEW_EXPORT
  EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/generated/tarn_plan_view_export.h)
configure_file(${PROJECT_BINARY_DIR}/generated/tarn_plan_view_export.h
  ${TARN_PUBLIC_INCLUDE}/TarnPlanView/tarn_plan_view_export.h COPYONLY)

# tarn_plugin_layer(NAME target DIR folder [USES layers...] [EXPORTS headers...])
# Compiles every source of the folder; the headers named under EXPORTS are what hosts may include.
function(tarn_plugin_layer)
  cmake_parse_arguments(L "" "NAME;DIR" "USES;EXPORTS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${L_DIR}/*.h ${PROJECT_SOURCE_DIR}/${L_DIR}/*.cpp)
  add_library(${L_NAME} OBJECT ${sources})
  target_include_directories(${L_NAME} PUBLIC ${PROJECT_SOURCE_DIR}/${L_DIR} ${PROJECT_BINARY_DIR}/generated)
  target_link_libraries(${L_NAME} PUBLIC tarn_host_api ${L_USES} Qt5::Concurrent Qt5::Svg PRIVATE tarn_build_options)
  target_link_libraries(TarnPlanView PRIVATE ${L_NAME})
  foreach(header ${L_EXPORTS})
    configure_file(${PROJECT_SOURCE_DIR}/${L_DIR}/${header} ${TARN_PUBLIC_INCLUDE}/TarnPlanView/${header} COPYONLY)
    list(APPEND exported ${PROJECT_SOURCE_DIR}/${L_DIR}/${header})
  endforeach()
  install(FILES ${exported} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/TarnPlanView)
  set(TARN_PLUGIN_LAYERS ${TARN_PLUGIN_LAYERS} ${L_NAME} PARENT_SCOPE)
endfunction()

tarn_plugin_layer(NAME tarn_plan_config DIR service/config
  EXPORTS view_config_manager.h auto_plan_helper.h plan_clock.h)
tarn_plugin_layer(NAME tarn_plan_data DIR data USES tarn_plan_config
  EXPORTS theme_node_type.h view_manager_param.h item_level.h item_type.h plan_item_role.h plan_region_info.h
          plan_camera_tree_info.h btn_image_info.h view_public_def.h standard_plan_model.h standard_plan_model_export.h
          view_model_data_manager_export.h view_sort_filter_proxy_model_export.h)
tarn_plugin_layer(NAME tarn_plan_controller DIR service/controller USES tarn_plan_data tarn_plan_config
  EXPORTS standard_view_controller.h plugin_shutdown.h)

# The plug-in's icons; object files of their own, so that tests of single layers have them too.
add_library(tarn_plan_resources OBJECT ${PROJECT_SOURCE_DIR}/resources/tarn_plan_view.qrc)
list(APPEND TARN_PLUGIN_LAYERS tarn_plan_resources)
target_link_libraries(TarnPlanView PRIVATE tarn_plan_resources)
target_link_libraries(tarn_plan_resources PRIVATE Qt5::Core)

target_include_directories(TarnPlanView INTERFACE
  $<BUILD_INTERFACE:${TARN_PUBLIC_INCLUDE}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(TarnPlanView PUBLIC tarn_host_api PRIVATE TarnHost::TarnHost tarn_build_options
  Qt5::Concurrent Qt5::Svg)
