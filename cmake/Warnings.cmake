# SPDX-License-Identifier: MIT
# Every target of the project is held to the same warnings, and a warning ends the build. A package, which is built by
# compilers yet to come, says OFF.
option(STOWPOCKET_WERROR "End the build at a warning" ON)
add_library(stowpocket_options INTERFACE)
target_compile_options(stowpocket_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Woverloaded-virtual
    -Wnon-virtual-dtor -Wcast-align -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough -Wnull-dereference $<$<BOOL:${STOWPOCKET_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(stowpocket_options INTERFACE -Wduplicated-cond -Wlogical-op -Wuseless-cast)
    # g++ 12 sees null pointers, uninitialised members and overlapping copies in std::variant, std::optional and
    # std::string where there are none (GCC bugs 105329, 105562, 105651); clang checks the same code.
    target_compile_options(stowpocket_options INTERFACE -Wno-null-dereference -Wno-maybe-uninitialized -Wno-restrict)
endif()
target_compile_definitions(stowpocket_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
if(NOT APPLE)  # whose linker leaves out what is not needed by another name
    target_link_options(stowpocket_options INTERFACE LINKER:--as-needed)
endif()

if(STOWPOCKET_SANITIZE)
    add_compile_options(-fsanitize=${STOWPOCKET_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${STOWPOCKET_SANITIZE})
endif()
