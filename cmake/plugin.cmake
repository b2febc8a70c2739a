# The plug-in: one object library a layer, each seeing only the layers before it, joined into libTarnPlanView.so.
include(GenerateExportHeader)
set(TARN_PUBLIC_INCLUDE ${PROJECT_BINARY_DIR}/include)
set(TARN_PLUGIN_LAYERS)
# Included as <TarnPlanView/...> with either Qt.
set(TARN_INSTALLED_INCLUDE ${CMAKE_INSTALL_INCLUDEDIR})
if(TARN_QT_SUFFIX)
  string(APPEND TARN_INSTALLED_INCLUDE /TarnPlanView${TARN_QT_SUFFIX})
endif()

add_library(TarnPlanView SHARED)
add_library(TarnPlanView::TarnPlanView ALIAS TarnPlanView)
set_target_properties(TarnPlanView PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${TARN_INTERFACE_VERSION}
  OUTPUT_NAME TarnPlanView${TARN_QT_SUFFIX})
tarn_export_marked_symbols(TarnPlanView)
generate_export_header(TarnPlanView EXPORT_MACRO_NAME TARNPLANVIEW_EXPORT
  EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/generated/tarn_plan_view_export.h)
configure_file(${PROJECT_BINARY_DIR}/generated/tarn_plan_view_export.h
  ${TARN_PUBLIC_INCLUDE}/TarnPlanView/tarn_plan_view_export.h COPYONLY)

# tarn_plugin_layer(NAME target DIR folders... [USES layers...] [EXPORTS headers...])
# Compiles every source of the folders; the headers named under EXPORTS are what hosts may include, by their bare name.
function(tarn_plugin_layer)
  cmake_parse_arguments(L "" "NAME" "DIR;USES;EXPORTS" ${ARGN})
  set(folders ${L_DIR})
  list(TRANSFORM folders PREPEND ${PROJECT_SOURCE_DIR}/)
  foreach(folder ${folders})
    file(GLOB in_folder CONFIGURE_DEPENDS ${folder}/*.h ${folder}/*.cpp)
    list(APPEND sources ${in_folder})
  endforeach()
  add_library(${L_NAME} OBJECT ${sources})
  set_target_properties(${L_NAME} PROPERTIES AUTOUIC ON AUTOUIC_SEARCH_PATHS ${PROJECT_SOURCE_DIR}/resources/forms)
  target_include_directories(${L_NAME} PUBLIC ${folders} ${PROJECT_BINARY_DIR}/generated)
  target_link_libraries(${L_NAME} PUBLIC tarn_host_api tarn_plan_rules tarn_host_calls ${L_USES} Qt${TARN_QT_VERSION}::Svg PRIVATE tarn_build_options)
  target_link_libraries(TarnPlanView PRIVATE ${L_NAME})
  foreach(header ${L_EXPORTS})
    find_file(source_of_header ${header} PATHS ${folders} NO_DEFAULT_PATH NO_CACHE REQUIRED)
    get_filename_component(header ${header} NAME)
    configure_file(${source_of_header} ${TARN_PUBLIC_INCLUDE}/TarnPlanView/${header} COPYONLY)
    list(APPEND exported ${source_of_header})
    unset(source_of_header)
  endforeach()
  install(FILES ${exported} DESTINATION ${TARN_INSTALLED_INCLUDE}/TarnPlanView COMPONENT development)
  set(TARN_PLUGIN_LAYERS ${TARN_PLUGIN_LAYERS} ${L_NAME} PARENT_SCOPE)
endfunction()

tarn_plugin_layer(NAME tarn_plan_config DIR config
  EXPORTS view_config_manager.h auto_plan_helper.h plan_clock.h)
tarn_plugin_layer(NAME tarn_plan_data DIR data USES tarn_plan_config
  EXPORTS theme_node_type.h view_manager_param.h item_level.h item_type.h plan_item_role.h plan_region_info.h
          plan_camera_tree_info.h btn_image_info.h view_public_def.h standard_plan_model.h standard_plan_model_export.h
          view_model_data_manager_export.h view_sort_filter_proxy_model_export.h plugin_shutdown.h)
tarn_plugin_layer(NAME tarn_plan_controller DIR service/controller USES tarn_plan_data tarn_plan_config
  EXPORTS call_answer.h standard_view_controller.h)
tarn_plugin_layer(NAME tarn_plan_default_view DIR service/default_view
  USES tarn_plan_controller tarn_plan_data tarn_plan_config
  EXPORTS default_load_view_display.h)
tarn_plugin_layer(NAME tarn_plan_tree DIR tree USES tarn_plan_controller tarn_plan_data tarn_plan_config
  EXPORTS open_group.h plan_view_tree.h)
tarn_plugin_layer(NAME tarn_plan_dialogs DIR dialogs dialogs/editor
  USES tarn_plan_tree tarn_plan_controller tarn_plan_data tarn_plan_config
  EXPORTS save_plan_as_dlg.h)
tarn_plugin_layer(NAME tarn_plan_panel DIR panel panel/actions panel/editor panel/moves panel/pages panel/popups panel/preview panel/search
  USES tarn_plan_dialogs tarn_plan_tree tarn_plan_default_view tarn_plan_controller tarn_plan_data tarn_plan_config
  EXPORTS panel_keys.h plugin_version.h search_memory.h view_extern_widget.h view_save_menu.h view_save_actions.h)

set_source_files_properties(${PROJECT_SOURCE_DIR}/panel/plugin_version.cpp PROPERTIES
  COMPILE_DEFINITIONS "TARN_PLUGIN_VERSION=\"${PROJECT_VERSION}\";TARN_INTERFACE_VERSION=${TARN_INTERFACE_VERSION}")

# The plug-in's icons; object files of their own, so that tests of single layers have them too.
add_library(tarn_plan_resources OBJECT ${PROJECT_SOURCE_DIR}/resources/tarn_plan_view.qrc)
list(APPEND TARN_PLUGIN_LAYERS tarn_plan_resources)
target_link_libraries(TarnPlanView PRIVATE tarn_plan_resources)
target_link_libraries(tarn_plan_resources PRIVATE Qt${TARN_QT_VERSION}::Core)

target_include_directories(TarnPlanView INTERFACE
  $<BUILD_INTERFACE:${TARN_PUBLIC_INCLUDE}> $<INSTALL_INTERFACE:${TARN_INSTALLED_INCLUDE}>)
target_link_libraries(TarnPlanView PUBLIC tarn_host_api PRIVATE TarnHost::TarnHost tarn_build_options
  Qt${TARN_QT_VERSION}::Svg)
