# Run by cpack when all is installed in its own folder: adds the packages of the libraries that the programs
# are linked with to what the package depends on.
set(root "${CPACK_TEMPORARY_DIRECTORY}")
set(folder "${CPACK_TOPLEVEL_DIRECTORY}/library-dependencies")
file(GLOB programs "${root}/usr/bin/*" "${root}/usr/libexec/tessary/tessary-*")
list(FILTER programs EXCLUDE REGEX "\\.so$")
# It wants to be told of a source package.
file(WRITE "${folder}/debian/control" "Source: tessary\n\nPackage: tessary\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps -O ${programs}
    WORKING_DIRECTORY "${folder}" OUTPUT_VARIABLE found RESULT_VARIABLE status)
string(REGEX MATCH "shlibs:Depends=([^\n]+)" line "${found}")
if(NOT status EQUAL 0 OR NOT line)
    message(FATAL_ERROR "dpkg-shlibdeps names no packages: ${found}")
endif()
set(CPACK_DEBIAN_PACKAGE_DEPENDS "${CMAKE_MATCH_1}, ${CPACK_DEBIAN_PACKAGE_DEPENDS}")
