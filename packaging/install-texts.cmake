# Installs a manual page, with the version and the folder of the documents as it is under this prefix,
# and the documents, if any. They lie in one folder there: a link to another of them leads to it, and one to
# what is not installed is plain text.
cmake_path(ABSOLUTE_PATH MANDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)
cmake_path(ABSOLUTE_PATH DOCDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" NORMALIZE)

cmake_path(GET PAGE FILENAME NAME)
configure_file("${PAGE}" "${WORK}/${NAME}" @ONLY)
file(INSTALL "${WORK}/${NAME}" DESTINATION "${MANDIR}/man1")

# Two bytes that stand in no document mark the links that stay.
string(ASCII 1 OPEN)
string(ASCII 2 CLOSE)
foreach(DOCUMENT IN LISTS DOCUMENTS)
  file(READ "${DOCUMENT}" TEXT)
  string(REGEX REPLACE "\\]\\((https?://[^)]*|#[^)]*)\\)" "]${OPEN}\\1${CLOSE}" TEXT "${TEXT}")
  foreach(OTHER IN LISTS DOCUMENTS)
    cmake_path(GET OTHER FILENAME NAME)
    string(REGEX REPLACE "\\]\\([a-z./]*${NAME}(#[^)]*|)\\)" "]${OPEN}${NAME}\\1${CLOSE}" TEXT
                         "${TEXT}")
  endforeach()
  string(REGEX REPLACE "\\]\\([a-z./]*((examples|pictures)/[^)]*)\\)" "]${OPEN}\\1${CLOSE}" TEXT "${TEXT}")
  string(REGEX REPLACE "\\[([^]]*)\\]\\([^)]*\\)" "\\1" TEXT "${TEXT}")
  string(REPLACE "${OPEN}" "(" TEXT "${TEXT}")
  string(REPLACE "${CLOSE}" ")" TEXT "${TEXT}")
  cmake_path(GET DOCUMENT FILENAME NAME)
  file(WRITE "${WORK}/${NAME}" "${TEXT}")
  file(INSTALL "${WORK}/${NAME}" DESTINATION "${DOCDIR}")
endforeach()
