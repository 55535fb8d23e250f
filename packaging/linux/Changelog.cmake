# quillmender_read_changelog(FILE): takes the releases out of the changelog. Sets in the caller:
#   QUILLMENDER_RELEASE_DATE        the day of the newest release, as 2026-01-31
#   QUILLMENDER_CHANGELOG_VERSION   its version
#   QUILLMENDER_APPSTREAM_RELEASES  all releases, newest first, as AppStream writes them
#   QUILLMENDER_DEBIAN_CHANGELOG    all releases as Debian writes them, for the package version
#                                   VERSION followed by QUILLMENDER_PACKAGE_SUFFIX
# A section is "## 1.2.3 - 2026-01-31" and a list of lines that begin with "- "; lines that go on are
# indented.
function(quillmender_read_changelog file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    # A semicolon separates elements of a list, a bracket keeps them together: neither may here.
    file(READ ${file} text)
    string(REPLACE ";" "<semicolon>" text "${text}")
    string(REPLACE "[" "<bracket>" text "${text}")
    string(REPLACE "]" "<closing>" text "${text}")
    string(REGEX REPLACE "\n  +" " " text "${text}")
    string(REPLACE "\n" ";" lines "${text}")

    set(newest "")
    set(appstream "")
    set(debian "")
    set(open FALSE)
    macro(end_release)
        if(open)
            string(APPEND appstream "        </ul>\n      </description>\n    </release>\n")
            quillmender_rfc_date(${day} stamp)
            string(APPEND debian
                "\n -- Orvelline <packages@quillmender.example>  ${stamp}\n\n")
        endif()
    endmacro()
    foreach(line IN LISTS lines)
        if(line MATCHES "^## ([0-9.]+) - ([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])$")
            set(version ${CMAKE_MATCH_1})
            set(next ${CMAKE_MATCH_2})
            end_release()
            set(day ${next})
            set(open TRUE)
            if(newest STREQUAL "")
                set(newest ${version})
                set(QUILLMENDER_RELEASE_DATE ${day} PARENT_SCOPE)
            endif()
            string(APPEND appstream "    <release version=\"${version}\" date=\"${day}\">\n"
                "      <description>\n        <ul>\n")
            string(APPEND debian "quillmender (${version}${QUILLMENDER_PACKAGE_SUFFIX}) stable; "
                "urgency=medium\n\n")
        elseif(line MATCHES "^## ")
            message(FATAL_ERROR "${file}: this heading is no release: ${line}")
        elseif(open AND line MATCHES "^- (.+)$")
            string(STRIP "${CMAKE_MATCH_1}" change)
            string(APPEND debian "  * ${change}\n")
            string(REPLACE "&" "&amp;" change "${change}")
            string(REPLACE "<semicolon>" ";" change "${change}")
            string(REPLACE "<bracket>" "[" change "${change}")
            string(REPLACE "<closing>" "]" change "${change}")
            string(REPLACE "<" "&lt;" change "${change}")
            string(APPEND appstream "          <li>${change}</li>\n")
        endif()
    endforeach()
    end_release()
    if(newest STREQUAL "")
        message(FATAL_ERROR "${file} names no release")
    endif()
    string(REPLACE "<semicolon>" ";" debian "${debian}")
    string(REPLACE "<bracket>" "[" debian "${debian}")
    string(REPLACE "<closing>" "]" debian "${debian}")
    string(STRIP "${debian}" debian)
    string(STRIP "${appstream}" appstream)
    set(QUILLMENDER_CHANGELOG_VERSION ${newest} PARENT_SCOPE)
    set(QUILLMENDER_APPSTREAM_RELEASES "${appstream}" PARENT_SCOPE)
    set(QUILLMENDER_DEBIAN_CHANGELOG "${debian}" PARENT_SCOPE)
endfunction()

# The day as mail headers write it, at midnight of universal time.
function(quillmender_rfc_date day variable)
    execute_process(
        COMMAND date --rfc-email --utc --date ${day}
        OUTPUT_VARIABLE stamp OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${variable} ${stamp} PARENT_SCOPE)
endfunction()
