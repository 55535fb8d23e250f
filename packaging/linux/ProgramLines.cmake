# The program's path as the files of a Linux desktop want it, each with rules of its own. Included when
# the program is installed, as only then its path is known. It sets, from the path PROGRAM:
#   PROGRAM_VALUE    a value of a desktop entry
#   PROGRAM_EXEC     its key Exec
#   PROGRAM_SERVICE  the key Exec of a D-Bus service
function(quillmender_escape text character)
    string(REPLACE "${character}" "\\${character}" escaped "${${text}}")
    set(${text} "${escaped}" PARENT_SCOPE)
endfunction()

set(argument "${PROGRAM}")
if(NOT argument MATCHES "^[A-Za-z0-9_/.,:@%=+-]*$")
    # The backslash first, which the others bring in.
    quillmender_escape(argument "\\")
    quillmender_escape(argument "\"")
    quillmender_escape(argument "$")
    quillmender_escape(argument "`")
    set(argument "\"${argument}\"")
endif()
# Both formats take values apart before they take quotes apart.
set(PROGRAM_SERVICE "${argument}")
quillmender_escape(PROGRAM_SERVICE "\\")
set(PROGRAM_VALUE "${PROGRAM}")
quillmender_escape(PROGRAM_VALUE "\\")
set(PROGRAM_EXEC "${PROGRAM_SERVICE}")
if(PROGRAM MATCHES "%" AND NOT PROGRAM MATCHES "=")
    # Most desktops look whether the program is there before they make one percent sign of two.
    string(REPLACE "%" "%%" PROGRAM_EXEC "/usr/bin/env ${PROGRAM_EXEC}")
endif()
