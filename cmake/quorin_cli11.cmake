# CLI11, which reads command lines; one line where it is missing. Seen also by whoever adds this tree to another.
if(NOT TARGET CLI11::CLI11)
    find_package(CLI11 QUIET GLOBAL)
    if(NOT CLI11_FOUND)
        message(FATAL_ERROR "CLI11 was not found: apt-get install libcli11-dev")
    endif()
endif()
