# Run by an installation: the headers of the tree include each other as "ioshare/io_client.h", from the tree's root.
# Installed, they do as <quorin/ioshare/io_client.h>, so that programs need one include folder and see no other names.
foreach(header IN LISTS headers)
    set(file "$ENV{DESTDIR}${folder}/quorin/${header}")
    file(READ "${file}" text)
    string(REGEX REPLACE "#include \"([a-z_]+/[a-z_0-9]+\\.h)\"" "#include <quorin/\\1>" text "${text}")
    file(WRITE "${file}" "${text}")
endforeach()
