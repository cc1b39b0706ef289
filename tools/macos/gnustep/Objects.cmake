# SPDX-License-Identifier: MIT
# gnustep_objects(VARIABLE SOURCES...) compiles Objective-C++ sources for GNUstep, with automatic reference counting, and
# names their objects in VARIABLE. GNUSTEP_LIBRARIES are what they are linked with.
find_program(GNUSTEP_CLANG clang++-14 REQUIRED)
execute_process(COMMAND gcc -print-file-name=include OUTPUT_VARIABLE gcc_headers OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
set(GNUSTEP_TOOLS ${CMAKE_CURRENT_LIST_DIR})
set(GNUSTEP_LIBRARIES BlocksRuntime gnustep-gui gnustep-base objc dl)
set(GNUSTEP_COMMAND ${GNUSTEP_CLANG} -std=c++20 -g -Wall -Wextra -Werror -Wno-unused-parameter
    -fobjc-runtime=gnustep-1.9 -fobjc-legacy-dispatch -fobjc-arc -fblocks -fexceptions -fobjc-exceptions
    -fconstant-string-class=NSConstantString -D_NATIVE_OBJC_EXCEPTIONS -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1
    -DGNU_GUI_LIBRARY=1 -DGNU_RUNTIME=1 -I${PROJECT_SOURCE_DIR}/src -I${PROJECT_SOURCE_DIR}/tests
    -I${GNUSTEP_TOOLS}/.. -isystem ${GNUSTEP_TOOLS} -isystem /usr/include/GNUstep
    -isystem ${GNUSTEP_TOOLS}/../declarations -idirafter ${gcc_headers})

function(gnustep_command output source)
    add_custom_command(OUTPUT ${output} DEPENDS ${source} DEPFILE ${output}.d VERBATIM
        COMMAND ${GNUSTEP_COMMAND} -MD -MF ${output}.d ${ARGN} ${source} -o ${output})
endfunction()

function(gnustep_objects variable)
    set(objects "")
    set(header ${CMAKE_CURRENT_BINARY_DIR}/Later.pch)
    gnustep_command(${header} ${GNUSTEP_TOOLS}/Later.h -x objective-c++-header)
    foreach(source ${ARGN})
        cmake_path(GET source STEM name)
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${name}.o)
        gnustep_command(${object} ${source} -include-pch ${header} -c)
        add_custom_command(OUTPUT ${object} DEPENDS ${header} APPEND)
        list(APPEND objects ${object})
    endforeach()
    set(runtime ${CMAKE_CURRENT_BINARY_DIR}/Runtime.o)
    add_custom_command(OUTPUT ${runtime} DEPENDS ${GNUSTEP_TOOLS}/Runtime.c VERBATIM
        COMMAND ${GNUSTEP_CLANG} -x c -g -Wall -Wextra -Werror -c ${GNUSTEP_TOOLS}/Runtime.c -o ${runtime})
    set(${variable} ${objects} ${runtime} PARENT_SCOPE)
endfunction()
