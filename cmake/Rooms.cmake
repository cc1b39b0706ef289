# SPDX-License-Identifier: MIT
# One static library a room. KNOWS names the rooms beneath it, which its headers may include; USES what only its
# sources need.
function(stowpocket_room name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;KNOWS;USES")
    add_library(stowpocket_${name} STATIC ${room_SOURCES})
    target_include_directories(stowpocket_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    list(TRANSFORM room_KNOWS PREPEND stowpocket_)
    target_link_libraries(stowpocket_${name} PUBLIC ${room_KNOWS} PRIVATE stowpocket_options ${room_USES})
endfunction()
