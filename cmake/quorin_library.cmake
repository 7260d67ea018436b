# quorin_room(TARGET FOLDER)
#
# Lets TARGET include the headers of FOLDER, and of nothing else: "ioshare/io_client.h" as the sources write it, and
# <quorin/ioshare/io_client.h> as an installed program does. A folder of the tree is seen through a link of its own, so
# that an include that no target_link_libraries allows finds no file.
function(quorin_room target folder)
    set(room ${quorin_BINARY_DIR}/rooms/${folder})
    get_filename_component(parent ${room}/quorin/${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    get_filename_component(plain ${room}/${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${plain})
    file(CREATE_LINK ${quorin_SOURCE_DIR}/${folder} ${room}/${folder} SYMBOLIC)
    file(CREATE_LINK ${quorin_SOURCE_DIR}/${folder} ${room}/quorin/${folder} SYMBOLIC)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        target_include_directories(${target} PRIVATE ${room})
    else()
        target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${room}>)
    endif()
endfunction()

# quorin_public_names(TARGET HEADERS header... OWN header...)
#
# Of a shared library, other programs see the names of its installed headers, "folder/header.h", and no others. Everything
# is compiled as hidden, save what these headers declare, which each of its sources therefore reads first. The classes of
# its own headers, which public ones may name, and those of the toolkit are taken out again when it is linked, as is what
# the standard library makes of other people's.
function(quorin_public_names target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;OWN")
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL "SHARED_LIBRARY")
        return()
    endif()
    list(TRANSFORM arg_HEADERS REPLACE "(.+)" "#include \"\\1\"\n" OUTPUT_VARIABLE includes)
    string(JOIN "" includes ${includes})
    set(names ${CMAKE_CURRENT_BINARY_DIR}/${target}_names.h)
    file(CONFIGURE OUTPUT ${names} @ONLY
         CONTENT "#pragma GCC visibility push(default)\n${includes}#pragma GCC visibility pop\n")
    target_compile_options(${target} PRIVATE -fvisibility=hidden "SHELL:-include \"${names}\"")

    set(classes "Fl_*")
    foreach(header IN LISTS arg_OWN)
        file(STRINGS ${quorin_SOURCE_DIR}/${header} heads REGEX "^(class|struct) [a-z_]+")
        list(TRANSFORM heads REPLACE "^(class|struct) ([a-z_]+).*" "\\2")
        list(APPEND classes ${heads})
    endforeach()
    set(hidden "*CLI::*;*toml::*;")
    foreach(class IN LISTS classes)
        string(APPEND hidden "${class}::*;vtable?for?${class};typeinfo?for?${class};typeinfo?name?for?${class};")
    endforeach()
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_names.map)
    file(CONFIGURE OUTPUT ${script} @ONLY
         CONTENT "{ local: __bss_start; _edata; _end; extern \"C++\" { ${hidden} }; };\n")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
endfunction()

# quorin_library(NAME SOURCES a.cpp... HEADERS a.h... [OWN a.h...] [LINKS target...] [NEEDS target...])
#
# A library of the project, in the folder that calls: the target quorin_NAME, its alias quorin::NAME, its installed
# headers and its package component NAME. Headers named as OWN are the folder's own business and are not installed. LINKS
# are public: whoever links the library gets them too. NEEDS are what only its own sources see. Nothing is made of a
# component that is not to be built (quorin_components.cmake).
#
# The package and its test read the components and their headers from the global properties QUORIN_COMPONENTS, each after
# those that it links, QUORIN_LINKS_<name>, QUORIN_NEEDS_<name>, what only its sources need of the machine's libraries
# (quorin_components.cmake), QUORIN_HEADERS and QUORIN_OWN_HEADERS, as "folder/header.h".
# The reference reads QUORIN_HEADERS_<name>, those of one component.
function(quorin_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;OWN;LINKS;NEEDS")
    if(NOT name IN_LIST quorin_built_components)
        return()
    endif()
    foreach(library IN LISTS quorin_outside_libraries)
        if("quorin::${library}" IN_LIST arg_LINKS OR "quorin::${library}" IN_LIST arg_NEEDS)
            include(quorin_${library})
            if(NOT TARGET quorin::${library})
                message(FATAL_ERROR "${quorin_${library}_missing}")
            endif()
        endif()
    endforeach()
    if("CLI11::CLI11" IN_LIST arg_NEEDS)
        include(quorin_cli11)
    endif()
    if("quorin_tomlplusplus" IN_LIST arg_NEEDS)
        include(quorin_tomlplusplus)
    endif()
    set(target quorin_${name})
    add_library(${target} ${arg_SOURCES})
    add_library(quorin::${name} ALIAS ${target})
    file(RELATIVE_PATH folder ${quorin_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    quorin_room(${target} ${folder})
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${target} PUBLIC ${arg_LINKS} PRIVATE $<BUILD_INTERFACE:quorin_options>)
    # A library of the machine's must also be linked by whoever links an archive; headers alone need not be there.
    set(needs "")
    foreach(needed IN LISTS arg_NEEDS)
        if(needed MATCHES "^quorin::")
            list(APPEND needs ${needed})
            target_link_libraries(${target} PRIVATE ${needed})
        else()
            target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:${needed}>)
        endif()
    endforeach()
    target_compile_features(${target} PUBLIC cxx_std_20)
    # Before 1.0 a minor version may change what programs are linked with, as the package config says too.
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name} POSITION_INDEPENDENT_CODE ON
        VERSION ${quorin_VERSION} SOVERSION ${quorin_VERSION_MAJOR}.${quorin_VERSION_MINOR})
    set_property(GLOBAL APPEND PROPERTY QUORIN_COMPONENTS ${name})
    set_property(GLOBAL PROPERTY QUORIN_LINKS_${name} ${arg_LINKS})
    set_property(GLOBAL PROPERTY QUORIN_NEEDS_${name} ${needs})
    list(TRANSFORM arg_OWN PREPEND ${folder}/)
    set_property(GLOBAL APPEND PROPERTY QUORIN_OWN_HEADERS ${arg_OWN})
    set(headers ${arg_HEADERS})
    list(TRANSFORM headers PREPEND ${folder}/)
    set_property(GLOBAL PROPERTY QUORIN_HEADERS_${name} ${headers})
    set_property(GLOBAL APPEND PROPERTY QUORIN_HEADERS ${headers})
    quorin_public_names(${target} HEADERS ${headers} OWN ${arg_OWN})
    install(FILES ${arg_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quorin/${folder} COMPONENT development)
    install(TARGETS ${target} EXPORT quorin_${name}
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT development)
    install(EXPORT quorin_${name} NAMESPACE quorin:: FILE quorin_${name}.cmake
            DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quorin COMPONENT development)
endfunction()

# quorin_program(NAME SOURCES a.cpp... [LINKS target...])
#
# A program of the project, in the folder that calls; installed with its page. There are programs only where every
# component is built.
function(quorin_program name)
    if(QUORIN_COMPONENTS)
        return()
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    file(RELATIVE_PATH folder ${quorin_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    quorin_room(${name} ${folder})
    target_link_libraries(${name} PRIVATE ${arg_LINKS} quorin_options)
    target_compile_definitions(${name} PRIVATE QUORIN_VERSION="${quorin_VERSION}")
    install(TARGETS ${name} RUNTIME COMPONENT programs)
    configure_file(${quorin_SOURCE_DIR}/docs/man/${name}.1 ${quorin_BINARY_DIR}/man/${name}.1 @ONLY)
    install(FILES ${quorin_BINARY_DIR}/man/${name}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT programs)
endfunction()
