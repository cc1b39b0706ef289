# SPDX-License-Identifier: MIT
# gnustep_objects(VARIABLE SOURCES...) compiles Objective-C++ sources for GNUstep, with automatic reference counting and
# under the address sanitizer, and names their objects in VARIABLE. GNUSTEP_LIBRARIES are what they are linked with. They run with GNUSTEP_ENVIRONMENT.
find_program(GNUSTEP_CLANG clang++-14 REQUIRED)
execute_process(COMMAND gcc -print-file-name=include OUTPUT_VARIABLE gcc_headers OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
set(GNUSTEP_TOOLS ${CMAKE_CURRENT_LIST_DIR})
set(GNUSTEP_LIBRARIES BlocksRuntime gnustep-gui gnustep-base objc dl -fsanitize=address)
set(home ${CMAKE_CURRENT_BINARY_DIR}/libhome.so)
set(GNUSTEP_ENVIRONMENT LD_PRELOAD=${home}
    ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0:detect_stack_use_after_return=1)
set(GNUSTEP_OPTIONS -g -Wall -Wextra -Werror -fsanitize=address)
set(GNUSTEP_COMMAND ${GNUSTEP_CLANG} -std=c++20 ${GNUSTEP_OPTIONS} -Wno-unused-parameter
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
    add_custom_command(OUTPUT ${home} DEPENDS ${GNUSTEP_TOOLS}/Home.c VERBATIM
        COMMAND ${GNUSTEP_CLANG} -x c -shared -fPIC ${GNUSTEP_TOOLS}/Home.c -o ${home} -ldl)
    set(runtime ${CMAKE_CURRENT_BINARY_DIR}/Runtime.o)
    add_custom_command(OUTPUT ${runtime} DEPENDS ${GNUSTEP_TOOLS}/Runtime.c VERBATIM
        COMMAND ${GNUSTEP_CLANG} -x c ${GNUSTEP_OPTIONS} -c ${GNUSTEP_TOOLS}/Runtime.c -o ${runtime})
    set(${variable} ${objects} ${runtime} ${home} PARENT_SCOPE)
endfunction()
