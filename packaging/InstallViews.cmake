# SPDX-License-Identifier: MIT
# The companion module, beside what Install.cmake puts where:
#   <qml>/VorlixPlugin/Views/      the module
#   include/VorlixPlugin/          the headers of its exported classes, as in #include "views/store/SeriesStore.h"
#   lib/cmake/VorlixPlugin/        target Vorlix::Views in the same package
#   lib/pkgconfig/vorlixviews.pc   for other build systems

install(TARGETS vorlixviews EXPORT VorlixPlugin LIBRARY DESTINATION ${module_dir}/Views COMPONENT module)
install(FILES ${VORLIX_VIEWS_MODULE_FILES} DESTINATION ${module_dir}/Views COMPONENT module)

vorlix_install_headers(${include_dir} COMPONENT development ROOTS ${VORLIX_VIEWS_PUBLIC_HEADERS})
target_compile_features(vorlixviews INTERFACE cxx_std_17)
target_include_directories(vorlixviews INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${include_dir}>)
target_link_libraries(vorlixviews INTERFACE Qt::Core)

configure_file(${CMAKE_CURRENT_LIST_DIR}/vorlixviews.pc.in ${package_build_dir}/vorlixviews.pc @ONLY)
install(FILES ${package_build_dir}/vorlixviews.pc DESTINATION ${pkgconfig_dir} COMPONENT development)
