# Run by CPack between the installation and the packages: what Debian wants of a package beside what was installed. All
# of it is made of LICENSE, CHANGELOG.md, the version, and the notices and overrides that stand beside this file.
file(GLOB components LIST_DIRECTORIES true ${CPACK_TEMPORARY_DIRECTORY}/*)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)

# The licence in the form that tools read: its text indented, an empty line as a dot.
file(READ ${CPACK_QUORIN_SOURCE}/LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)\n+(.*)" licence "${licence}")
set(holder ${CMAKE_MATCH_1})
string(REGEX REPLACE "\n+$" "" text "${CMAKE_MATCH_2}")
string(REPLACE "\n\n" "\n.\n" text "${text}")
string(REPLACE "\n" "\n " text "${text}")

# Headers alone bring code of others into what is built; what they ask for goes with it.
file(READ ${CPACK_QUORIN_SOURCE}/cmake/quorin_debian_notices.txt notices)

# quorin_compressed(FILE): as policy wants it, the same bytes for the same contents.
function(quorin_compressed file)
    execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(folder IN LISTS components)
    get_filename_component(component ${folder} NAME)
    string(TOUPPER ${component} component)
    set(package ${CPACK_DEBIAN_${component}_PACKAGE_NAME})
    set(documents ${folder}/usr/share/doc/${package})
    file(WRITE ${documents}/copyright
        "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\nUpstream-Name: quorin\n\n"
        "Files: *\nCopyright: ${holder}\nLicense: Expat\n ${text}\n\n${notices}")
    file(WRITE ${documents}/changelog.Debian
        "quorin (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
        "  * Version ${CPACK_PACKAGE_VERSION}; what is new is in changelog.gz.\n\n"
        " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
    quorin_compressed(${documents}/changelog.Debian)
    configure_file(${CPACK_QUORIN_SOURCE}/CHANGELOG.md ${documents}/changelog COPYONLY)
    quorin_compressed(${documents}/changelog)
    if(EXISTS ${CPACK_QUORIN_SOURCE}/cmake/${package}.lintian-overrides)
        configure_file(${CPACK_QUORIN_SOURCE}/cmake/${package}.lintian-overrides
                       ${folder}/usr/share/lintian/overrides/${package} COPYONLY)
    endif()
    file(GLOB pages ${folder}/usr/share/man/man*/*)
    foreach(page IN LISTS pages)
        quorin_compressed(${page})
    endforeach()
    # As Debian's own tools do it: of an archive's members the names are needed.
    file(GLOB programs ${folder}/usr/bin/*)
    file(GLOB_RECURSE archives ${folder}/usr/*.a)
    foreach(file IN LISTS programs archives)
        set(all "")
        if(file MATCHES "\\.a$")
            set(all --strip-debug --enable-deterministic-archives)
        endif()
        execute_process(COMMAND ${CPACK_QUORIN_STRIP} ${all} --remove-section=.comment --remove-section=.note ${file}
                        COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    # Whatever rights whoever makes the packages gives to new files.
    execute_process(COMMAND chmod -R ug-s,u=rwX,go=rX ${folder} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
