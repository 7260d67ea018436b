# CLI11, which reads command lines; one line where it is missing.
find_package(CLI11 QUIET)
if(NOT CLI11_FOUND)
    message(FATAL_ERROR "CLI11 was not found: apt-get install libcli11-dev")
endif()
