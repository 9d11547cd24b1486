# What an image or an SDK takes from the build; DESTDIR names its tree.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/platform)
set(share_dir ${CMAKE_INSTALL_DATADIR}/${PROJECT_NAME})

install(TARGETS ${INSTALLED_PLATFORM} EXPORT platform-targets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT platform-targets NAMESPACE platform:: DESTINATION ${package_dir})

configure_package_config_file(cmake/platform-config.cmake.in platform-config.cmake
  INSTALL_DESTINATION ${package_dir} PATH_VARS share_dir)
write_basic_package_version_file(platform-config-version.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/platform.pc.in platform.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/platform-config.cmake
              ${PROJECT_BINARY_DIR}/platform-config-version.cmake
        DESTINATION ${package_dir})
install(FILES ${PROJECT_BINARY_DIR}/platform.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The functions that a host must define: its build can hold itself to the list.
install(FILES ${HOST_FUNCTIONS} DESTINATION ${share_dir} RENAME host-functions.txt)
install(FILES docs/platform.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3)

if(TARGET boardctl)
  install(TARGETS boardctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # What it makes virtual boards of.
  install(TARGETS boardhost board-tool
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/${PROJECT_NAME}
          RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/${PROJECT_NAME})
  install(DIRECTORY board/root/ DESTINATION ${share_dir}/board)
  install(FILES docs/boardctl.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES boardctl/boardctl.bash
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME boardctl)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR ${PROJECT_NAME})
set(CPACK_PACKAGE_CONTACT "${PROJECT_NAME} maintainers <root@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Board platform library of an MT7622 home router")
set(CPACK_PACKAGE_DESCRIPTION
    "Through this library a router's firmware reaches everything that is particular to its board.")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/cmake/debian/postinst ${PROJECT_SOURCE_DIR}/cmake/debian/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
