# Debian packages, by CPack; scripts/packages.sh makes them.
set(TARN_PACKAGE_MAINTAINER "TarnPlanView maintainers <maintainers@tarnplanview.invalid>" CACHE STRING
  "Who answers for the packages; the owner has not named anyone yet")
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)  # tests are not built to make packages
set(plugin_package libtarnplanview${TARN_QT_SUFFIX})
set(host_package libtarnhost${TARN_QT_SUFFIX})
set(development_package ${plugin_package}-dev)
# A name that ends in a digit or a letter of its own is parted from the number of the interface.
string(REGEX REPLACE "([0-9])$" "\\1-" plugin_package ${plugin_package})
string(REGEX REPLACE "([0-9])$" "\\1-" host_package ${host_package})
string(APPEND plugin_package ${TARN_INTERFACE_VERSION})
string(APPEND host_package ${TARN_INTERFACE_VERSION})

# What every package has beside its files; the date is that of the sources, where SOURCE_DATE_EPOCH says it.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${PROJECT_BINARY_DIR}/packaging/changelog @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/copyright.in ${PROJECT_BINARY_DIR}/packaging/copyright @ONLY)
find_program(GZIP_PROGRAM gzip REQUIRED)
function(tarn_compress source target)
  execute_process(COMMAND ${GZIP_PROGRAM} -9nc ${source} OUTPUT_FILE ${target} COMMAND_ERROR_IS_FATAL ANY)
endfunction()
tarn_compress(${PROJECT_BINARY_DIR}/packaging/changelog ${PROJECT_BINARY_DIR}/packaging/changelog.gz)

# tarn_package(component package section summary description DEPENDS packages... RECOMMENDS packages...)
function(tarn_package component package section summary description)
  cmake_parse_arguments(P "" "" "DEPENDS;RECOMMENDS;COMPONENTS" ${ARGN})
  string(TOUPPER ${component} upper)
  list(JOIN P_DEPENDS ", " depends)
  list(JOIN P_RECOMMENDS ", " recommends)
  foreach(setting "PACKAGE_NAME;${package}" "PACKAGE_SECTION;${section}" "PACKAGE_DEPENDS;${depends}"
      "PACKAGE_RECOMMENDS;${recommends}" "DESCRIPTION;${summary}${on_qt}\n${description}")
    list(POP_FRONT setting name)
    string(REPLACE ";" "\;" value "${setting}")
    set(CPACK_DEBIAN_${upper}_${name} "${value}" PARENT_SCOPE)
  endforeach()
  set(CPACK_COMPONENT_${upper}_DEPENDS ${P_COMPONENTS} PARENT_SCOPE)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz ${PROJECT_BINARY_DIR}/packaging/copyright
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endfunction()

set(drivers libqt5sql5-sqlite)
set(server_driver libqt5sql5-psql)
set(development_qt "qtbase5-dev (>= 5.15)")
set(on_qt "")
set(TARN_NAME_NOTE "")
if(TARN_QT_SUFFIX)
  set(on_qt ", on Qt 6")
  set(TARN_NAME_NOTE " (Qt 6)")
  set(drivers libqt6sql6-sqlite)
  set(server_driver libqt6sql6-psql)
  set(development_qt "qt6-base-dev (>= 6.4)")
endif()
tarn_package(host ${host_package} libs "substitute host of the plan panel: controls and plan store"
  "Controls over Qt Widgets and a plan store on SQLite or PostgreSQL, which the
plan panel of TarnPlanView is run with where no other host offers them."
  DEPENDS ${drivers} RECOMMENDS ${server_driver})
tarn_package(plugin ${plugin_package} libs "plan panel of a video-surveillance client"
  "A tree of plan groups and plans, with search, previews and an editor, which
a desktop client embeds. A plan is a saved arrangement of live-video windows."
  COMPONENTS host)
tarn_package(development ${development_package} libdevel "plan panel of a video-surveillance client: headers"
  "Headers of the plan panel, of what a host has to offer and of the substitute
host, and the CMake package that finds them."
  COMPONENTS plugin host DEPENDS ${development_qt})
set(components host plugin development)
if(TARN_BUILD_HOSTKIT)
  # Of the Qt that the headers beside it are of.
  set(example ${PROJECT_SOURCE_DIR}/examples/embed)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${example}/CMakeLists.txt)
  file(READ ${example}/CMakeLists.txt example_build)
  string(REPLACE "(TARN_QT_VERSION 5 " "(TARN_QT_VERSION ${TARN_QT_VERSION} " example_build "${example_build}")
  file(WRITE ${PROJECT_BINARY_DIR}/packaging/embed/CMakeLists.txt "${example_build}")
  install(FILES ${example}/main.cpp ${example}/live_view.h ${PROJECT_BINARY_DIR}/packaging/embed/CMakeLists.txt
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${development_package}/examples/embed COMPONENT development)
endif()

set(TARN_CLIENT tarn-client${TARN_QT_SUFFIX})
string(REPLACE - \\- TARN_CLIENT_IN_MAN ${TARN_CLIENT})
string(REPLACE - _ TARN_CLIENT_ID org.tarnplanview.TarnClient${TARN_QT_SUFFIX})
# tarn_filled_in(template name): the template with what is called otherwise for either Qt.
function(tarn_filled_in template name)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/${template} ${PROJECT_BINARY_DIR}/packaging/${name} @ONLY)
endfunction()
if(TARN_BUILD_CLIENT)
  string(TIMESTAMP day "%Y-%m-%d" UTC)
  tarn_filled_in(tarn-client.1.in ${TARN_CLIENT}.1)
  tarn_filled_in(tarn-client.desktop.in ${TARN_CLIENT}.desktop)
  tarn_filled_in(metainfo.xml.in ${TARN_CLIENT_ID}.metainfo.xml)
  tarn_compress(${PROJECT_BINARY_DIR}/packaging/${TARN_CLIENT}.1 ${PROJECT_BINARY_DIR}/packaging/${TARN_CLIENT}.1.gz)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/${TARN_CLIENT}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT client)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/${TARN_CLIENT_ID}.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo COMPONENT client)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/${TARN_CLIENT}.desktop
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications COMPONENT client)
  install(FILES ${PROJECT_SOURCE_DIR}/client/images/window_icon.svg RENAME ${TARN_CLIENT}.svg
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/scalable/apps COMPONENT client)
  tarn_package(client ${TARN_CLIENT} video "shows the plans of a video-surveillance site and plays them"
    "A desk of a video-surveillance site: the trees of plans, a live wall of up to
four windows on several screens, the plan editor and the site's settings, for
cameras by RTSP and devices by ONVIF. It opens a demo site at its first start."
    COMPONENTS plugin host RECOMMENDS fonts-dejavu-core)
  list(APPEND components client)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarnplanview)
set(CPACK_PACKAGE_CONTACT ${TARN_PACKAGE_MAINTAINER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
  WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL ${components})
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# What other packages write down as they are built against a library (CPack's own would ask for one version exactly), and
# that the linker's cache is to be renewed.
function(tarn_library_package component library package)
  set(shlibs ${PROJECT_BINARY_DIR}/packaging/${component}/shlibs)
  file(WRITE ${shlibs} "${library}${TARN_QT_SUFFIX} ${TARN_INTERFACE_VERSION} ${package} (>= ${PROJECT_VERSION})\n")
  string(TOUPPER ${component} component)
  set(CPACK_DEBIAN_${component}_PACKAGE_CONTROL_EXTRA "${shlibs};${PROJECT_SOURCE_DIR}/packaging/triggers" PARENT_SCOPE)
endfunction()
tarn_library_package(host libTarnHost ${host_package})
tarn_library_package(plugin libTarnPlanView ${plugin_package})
include(CPack)
