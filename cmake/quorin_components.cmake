# Which components are built: all, or those of QUORIN_COMPONENTS with what they link. Of one that is not built there is no
# target, and what only it needs, FLTK for one, is not looked for.
set(QUORIN_COMPONENTS "" CACHE STRING "The components to build, with those that they link; empty: everything")

# The machine's libraries that installed components are linked with: quorin_<library>.cmake looks for each.
set(quorin_outside_libraries fltk libmd)

# What there is, and what each links: as the folders' own calls of quorin_library say it.
set(quorin_all_components "")
file(GLOB folders ${PROJECT_SOURCE_DIR}/*/CMakeLists.txt)
foreach(folder IN LISTS folders)
    file(READ ${folder} text)
    string(REGEX MATCHALL "quorin_library\\([^)]*\\)" calls "${text}")
    foreach(call IN LISTS calls)
        string(REGEX REPLACE "^quorin_library.([a-z_]+).*$" "\\1" name "${call}")
        string(REGEX MATCHALL "quorin::[a-z_]+" links_${name} "${call}")
        list(TRANSFORM links_${name} REPLACE "quorin::" "")
        list(APPEND quorin_all_components ${name})
    endforeach()
endforeach()

# Each that is added brings those that it links, in the next round.
set(quorin_built_components "")
set(added ${QUORIN_COMPONENTS})
if(NOT added)
    set(added ${quorin_all_components})
endif()
while(added)
    list(APPEND quorin_built_components ${added})
    set(next "")
    foreach(component IN LISTS added)
        if(NOT component IN_LIST quorin_all_components)
            list(JOIN quorin_all_components " " names)
            message(FATAL_ERROR "QUORIN_COMPONENTS: there is no ${component}; there are ${names}")
        endif()
        list(APPEND next ${links_${component}})
    endforeach()
    list(REMOVE_ITEM next ${quorin_outside_libraries} ${quorin_built_components})
    set(added ${next})
endwhile()
