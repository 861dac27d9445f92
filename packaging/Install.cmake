# SPDX-License-Identifier: MIT
# What `cmake --install` puts where. Everything is relative to the prefix, so that `--prefix` moves all of it:
#   <qml>/VorlixPlugin/            the module; by default Qt's own QML directory, where `import` finds it
#   include/VorlixPlugin/          the headers of the exported C++ classes, as in #include "filters/Filter1D.h"
#   lib/cmake/VorlixPlugin/        find_package(VorlixPlugin), target Vorlix::VorlixPlugin
#   lib/pkgconfig/vorlixplugin.pc  for other build systems
# What belongs to the companion module is in InstallViews.cmake.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
include(${CMAKE_CURRENT_LIST_DIR}/Headers.cmake)

set(module_dir ${VORLIX_INSTALL_QMLDIR}/VorlixPlugin)
set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/VorlixPlugin)
set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VorlixPlugin)

# The module.
install(TARGETS vorlixplugin EXPORT VorlixPlugin LIBRARY DESTINATION ${module_dir} COMPONENT module)
install(FILES ${VORLIX_MODULE_FILES} DESTINATION ${module_dir} COMPONENT module)

# The headers.
vorlix_install_headers(${include_dir} COMPONENT development ROOTS ${VORLIX_PUBLIC_HEADERS})
target_compile_features(vorlixplugin INTERFACE cxx_std_17)
target_include_directories(vorlixplugin INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${include_dir}>)
target_link_libraries(vorlixplugin INTERFACE Qt::Gui Qt::Quick)

# The CMake package.
install(EXPORT VorlixPlugin NAMESPACE Vorlix:: DESTINATION ${cmake_dir} COMPONENT development
  FILE VorlixPluginTargets.cmake)
set(package_build_dir ${PROJECT_BINARY_DIR}/package)
set(VORLIX_EXPORTED_QMLDIR ${VORLIX_INSTALL_QMLDIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/VorlixPluginConfig.cmake.in
  ${package_build_dir}/VorlixPluginConfig.cmake
  INSTALL_DESTINATION ${cmake_dir} PATH_VARS VORLIX_EXPORTED_QMLDIR)
write_basic_package_version_file(${package_build_dir}/VorlixPluginConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${package_build_dir}/VorlixPluginConfig.cmake ${package_build_dir}/VorlixPluginConfigVersion.cmake
  DESTINATION ${cmake_dir} COMPONENT development)

# The pkg-config file.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH VORLIX_PREFIX_FROM_PKGCONFIG /prefix/${pkgconfig_dir} /prefix)
string(REGEX REPLACE "/$" "" VORLIX_PREFIX_FROM_PKGCONFIG ${VORLIX_PREFIX_FROM_PKGCONFIG})
set(VORLIX_PKGCONFIG_MODULE_DIR ${module_dir})
if(NOT IS_ABSOLUTE ${module_dir})
  set(VORLIX_PKGCONFIG_MODULE_DIR \${prefix}/${module_dir})
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/vorlixplugin.pc.in ${package_build_dir}/vorlixplugin.pc @ONLY)
install(FILES ${package_build_dir}/vorlixplugin.pc DESTINATION ${pkgconfig_dir} COMPONENT development)
