add_compile_options(
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wformat=2)

if(QUILLMENDER_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(QUILLMENDER_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()

# A call is not old before the oldest Qt that is supported has the new one. The second name is that
# of Qt before 6.5.
math(EXPR oldestQt "(6 << 16) | (4 << 8)" OUTPUT_FORMAT HEXADECIMAL)
add_compile_definitions(QT_WARN_DEPRECATED_UP_TO=${oldestQt} QT_DEPRECATED_WARNINGS_SINCE=${oldestQt})

add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY
                        QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
