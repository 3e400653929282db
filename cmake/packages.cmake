# What is installed, and the Debian packages made of it: goods-desk, for a shop, and goods-vlk-dev, for whoever writes a
# host. cpack in the build folder makes both.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(module_dir ${CMAKE_INSTALL_LIBDIR}/goods-vlk)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/goods-vlk)
set(cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/GoodsVLK)

install(TARGETS desk goods-sql RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desk)
install(TARGETS host EXPORT GoodsVLKTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT desk NAMELINK_COMPONENT dev
    INCLUDES DESTINATION ${header_dir})
install(TARGETS Goods_VLK LIBRARY DESTINATION ${module_dir} COMPONENT desk)
install(FILES packaging/goods-desk.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desk)
install(FILES packaging/goods-desk.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT desk)
# The pictures that pages of the guide name.
file(GLOB guide CONFIGURE_DEPENDS docs/guide/*.md)
foreach(page ${guide})
    file(READ ${page} text)
    string(REGEX MATCHALL "pictures/[a-z0-9-]+\\.png" named "${text}")
    list(APPEND pictures ${named})
endforeach()
list(REMOVE_DUPLICATES pictures)
list(TRANSFORM pictures PREPEND docs/)
install(FILES ${pictures} DESTINATION ${CMAKE_INSTALL_DATADIR}/goods-vlk/pictures COMPONENT desk)
foreach(page desk goods-sql)
    configure_file(packaging/${page}.1.in packaging/${page}.1 @ONLY)
    add_custom_command(OUTPUT packaging/${page}.1.gz DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/packaging/${page}.1
        COMMAND gzip -9nkf ${CMAKE_CURRENT_BINARY_DIR}/packaging/${page}.1 VERBATIM)
    list(APPEND pages ${CMAKE_CURRENT_BINARY_DIR}/packaging/${page}.1.gz)
endforeach()
add_custom_target(manual ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT desk)

foreach(folder host/controls host/data host/look host/screens host/services)
    install(DIRECTORY ${folder} DESTINATION ${header_dir}/host COMPONENT dev FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES host/host.h host/host_export.h DESTINATION ${header_dir}/host COMPONENT dev)
install(FILES entry/exports.h DESTINATION ${header_dir}/entry COMPONENT dev)
install(DIRECTORY desk/database/ DESTINATION ${CMAKE_INSTALL_DATADIR}/goods-vlk/database COMPONENT dev
    FILES_MATCHING PATTERN "*.sql")
install(FILES docs/host-integration.md docs/sql-server.md DESTINATION ${CMAKE_INSTALL_DOCDIR}-dev COMPONENT dev)
install(EXPORT GoodsVLKTargets NAMESPACE GoodsVLK:: DESTINATION ${cmake_dir} COMPONENT dev)
configure_package_config_file(packaging/GoodsVLKConfig.cmake.in packaging/GoodsVLKConfig.cmake
    INSTALL_DESTINATION ${cmake_dir} PATH_VARS module_dir)
write_basic_package_version_file(packaging/GoodsVLKConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/packaging/GoodsVLKConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/packaging/GoodsVLKConfigVersion.cmake DESTINATION ${cmake_dir} COMPONENT dev)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME goods-desk)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Goods desk <goods-desk@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL desk dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_DESK_PACKAGE_NAME goods-desk)
set(CPACK_DEBIAN_DESK_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_DESK_DESCRIPTION "goods and inventory desk with a Persian interface
Keeps the goods of a shop: codes, units, prices, barcodes, serials, opening
stock, purchases and sales. The database is a file of the user, or a SQL Server.")
set(CPACK_DEBIAN_DESK_PACKAGE_DEPENDS "fonts-dejavu-core, fonts-dejavu-extra, qt6-translations-l10n, qt6-qpa-plugins")
set(CPACK_DEBIAN_DESK_PACKAGE_SUGGESTS "libqt6sql6-odbc, tdsodbc")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME goods-vlk-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "goods-desk (= ${PROJECT_VERSION}), qt6-base-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION "goods module: headers for hosts
The host library's headers, the functions of the goods module, the scripts of
its database and a CMake package, for programs that show its screens.")
include(CPack)
