# quorin_library(NAME SOURCES a.cpp... HEADERS a.h... [LINKS target...])
#
# A library of the project: its alias quorin::NAME, its installed headers and its package component NAME.
# LINKS are public: whoever links the library gets them too.
function(quorin_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;LINKS")
    add_library(${name} ${arg_SOURCES})
    add_library(quorin::${name} ALIAS ${name})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${arg_HEADERS})
    target_link_libraries(${name} PUBLIC ${arg_LINKS} PRIVATE $<BUILD_INTERFACE:quorin_options>)
    target_compile_features(${name} PUBLIC cxx_std_20)
    # A library target may not be called as its folder's neighbour in the install tree: -lstrings is nobody's.
    set_target_properties(${name} PROPERTIES OUTPUT_NAME quorin_${name} POSITION_INDEPENDENT_CODE ON)
    install(TARGETS ${name} EXPORT quorin_${name}
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
            FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quorin
            INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
    install(EXPORT quorin_${name} NAMESPACE quorin:: FILE quorin_${name}.cmake
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quorin)
endfunction()
