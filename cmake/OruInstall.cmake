# What `cmake --install` puts down of the libraries: headers, libraries, a CMake package and pkg-config files, in two
# components: `runtime` (what a program needs to run) and `dev` (what one needs to build). The programs of tools/ are a
# third one, `tools`. All of it may be moved to another prefix afterwards.
include(CMakePackageConfigHelpers)

set(ORU_LIBRARIES
  Oru.TimePoints Oru.Common.Database Oru.BusinessEntityModel.BaseTypes Oru.DataModel
  Oru.BusinessEntityModel.Edits Oru.DataModel.Database)

install(TARGETS ${ORU_LIBRARIES} EXPORT OruTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)

# Headers: all but the internal ones.
file(STRINGS ${PROJECT_SOURCE_DIR}/cmake/internal-headers.txt internal_headers REGEX "^[^#]")
set(internal_patterns)
foreach(header IN LISTS internal_headers)
  if(NOT EXISTS ${PROJECT_SOURCE_DIR}/${header})
    message(FATAL_ERROR "cmake/internal-headers.txt names ${header}, which isn't there")
  endif()
  string(REPLACE "." "\\." pattern ${header})
  list(APPEND internal_patterns REGEX "/${pattern}$" EXCLUDE)
endforeach()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/Oru
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev
  FILES_MATCHING PATTERN "*.h" ${internal_patterns})

# The CMake package. While the major version is 0, a minor version may break callers.
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Oru)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OruConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OruConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OruConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OruConfig.cmake ${PROJECT_BINARY_DIR}/OruConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT dev)
install(EXPORT OruTargets NAMESPACE Oru:: DESTINATION ${package_dir} COMPONENT dev)

# The pkg-config files, oru-datamodel-database.pc and so on. They find their prefix from their own
# place. SQLite is linked by the library that uses it and is nothing to callers.
cmake_path(APPEND from_prefix ${CMAKE_INSTALL_LIBDIR} pkgconfig)
file(RELATIVE_PATH to_prefix /${from_prefix} /)
string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
function(oru_pkg_config library description)
  string(TOLOWER "${library}" name)
  string(REPLACE "." "-" name "${name}")
  set(libs)
  get_target_property(type ${library} TYPE)
  if(type STREQUAL SHARED_LIBRARY)
    set(libs "-L\${libdir} -l${library}")
  endif()
  get_target_property(links ${library} INTERFACE_LINK_LIBRARIES)
  set(requires)
  foreach(link IN LISTS links)
    if(link MATCHES "^Oru\\.")
      string(TOLOWER "${link} = ${PROJECT_VERSION}" require)
      string(REGEX REPLACE "([a-z])\\.([a-z])" "\\1-\\2" require "${require}")
      list(APPEND requires "${require}")
    endif()
  endforeach()
  list(JOIN requires ", " requires)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/oru.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endfunction()
oru_pkg_config(Oru.TimePoints "Values of time: time points, rates, bounds, time codes")
oru_pkg_config(Oru.Common.Database "Object-relational access to SQLite")
oru_pkg_config(Oru.BusinessEntityModel.BaseTypes "Base types of the entities")
oru_pkg_config(Oru.DataModel "Media asset entities")
oru_pkg_config(Oru.BusinessEntityModel.Edits "Edit entities")
oru_pkg_config(Oru.DataModel.Database "Media assets and edits in one SQLite file")
