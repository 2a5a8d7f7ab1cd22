# Compiler settings that every target shares.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)

# -fPIC last: programs and libraries then share one precompiled header.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wno-shadow-field-in-constructor -Wno-unused-parameter
                    # libstdc++ 12's own stable_sort uses what it has deprecated
                    -Wno-deprecated-declarations
                    -fdiagnostics-color=always -fPIC)
if(LUMENPOST_WARNINGS_ARE_ERRORS)
    add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_CONTEXTLESS_CONNECT QT_NO_URL_CAST_FROM_STRING)

find_program(MOLD mold)
if(MOLD)
    add_link_options(-fuse-ld=mold)
endif()
add_link_options(-Wl,--as-needed -Wl,-z,now -rdynamic)

if(LUMENPOST_SANITIZE)
    add_compile_options(-fsanitize=${LUMENPOST_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=${LUMENPOST_SANITIZE})
    if(LUMENPOST_SANITIZE MATCHES "undefined")
        # Qt's plugins cross library borders with hidden type information.
        add_compile_options(-fno-sanitize=vptr,function)
    endif()
endif()

if(LUMENPOST_FUZZERS)
    # so that a fuzzer sees which code its inputs reach
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()

find_program(CCACHE ccache)
if(CCACHE)
    set(launcher ${CMAKE_SOURCE_DIR}/cmake/cached-compiler ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
endif()
set(CMAKE_PCH_INSTANTIATE_TEMPLATES ON)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:SHELL:-Xclang -fno-pch-timestamp>")
endif()
