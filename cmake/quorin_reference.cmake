# The target reference: pages of all that the installed headers declare, in reference/html of the build's folder. The
# components' descriptions stand in docs/reference; tools/header_reference says what becomes of a header on its way.
find_program(QUORIN_DOXYGEN doxygen)
find_package(Python3 QUIET COMPONENTS Interpreter)
mark_as_advanced(QUORIN_DOXYGEN)
if(NOT QUORIN_DOXYGEN OR NOT Python3_FOUND)
    message(STATUS "There is no target reference without doxygen and python3: apt-get install doxygen python3")
    return()
endif()

set(quorin_reference_folder ${PROJECT_BINARY_DIR}/reference)
set(quorin_reference_headers ${quorin_reference_folder}/headers)
configure_file(docs/reference/Doxyfile.in ${quorin_reference_folder}/Doxyfile @ONLY)

# A line for each component: its name, then its headers.
get_property(components GLOBAL PROPERTY QUORIN_COMPONENTS)
set(lines "")
foreach(component IN LISTS components)
    get_property(headers GLOBAL PROPERTY QUORIN_HEADERS_${component})
    list(JOIN headers " " headers)
    string(APPEND lines "${component} ${headers}\n")
endforeach()
file(CONFIGURE OUTPUT ${quorin_reference_folder}/headers.txt CONTENT "${lines}" @ONLY)

add_custom_target(reference
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${quorin_reference_headers} ${quorin_reference_folder}/html
    COMMAND Python3::Interpreter tools/header_reference ${quorin_reference_headers}/quorin ${quorin_reference_folder}/headers.txt
    COMMAND ${QUORIN_DOXYGEN} ${quorin_reference_folder}/Doxyfile
    COMMAND ${CMAKE_COMMAND} -E echo "The reference is ${quorin_reference_folder}/html/index.html"
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
