# Modules with an enforced direction.
#
#   lumenpost_module(NAME name [DEPENDS module...] [USES library...] [WIDGETS] [LOADABLE] [NO_PCH])
#
# Declares the folder it is called from as a module. A source of the module sees its own headers and those of
# the modules it names, and no others, not even what those name in turn: each module compiles against an include
# root of its own that holds one link a header. A dependency must be declared earlier, so no cycle can be written
# down.
#   USES      third-party or Qt libraries, for its own sources only
#   WIDGETS   may use Qt Widgets
#   LOADABLE  is opened at run time, when first needed
function(lumenpost_module)
    cmake_parse_arguments(M "WIDGETS;LOADABLE;NO_PCH" "NAME" "DEPENDS;USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
    if(NOT sources)
        set(sources ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
    endif()
    if(M_LOADABLE)
        add_library(${M_NAME} MODULE ${sources} ${headers})
        set_target_properties(${M_NAME} PROPERTIES
            PREFIX "lumenpost-" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
    else()
        add_library(${M_NAME} STATIC ${sources} ${headers})
    endif()
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
    set_target_properties(${M_NAME} PROPERTIES LUMENPOST_FOLDER "${folder}" LUMENPOST_HEADERS "${headers}")
    # A header that the glob finds later must go through moc as well; by itself its run isn't repeated for it.
    set(known ${CMAKE_CURRENT_BINARY_DIR}/${M_NAME}_headers)
    set(before)
    if(EXISTS ${known})
        file(READ ${known} before)
    endif()
    if(NOT before STREQUAL "${headers}")
        file(WRITE ${known} "${headers}")
        file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${M_NAME}_autogen/timestamp)
    endif()
    _lumenpost_setup(${M_NAME} ${folder})
endfunction()

# lumenpost_program(NAME name [DEPENDS …] [USES …] [WIDGETS]): the same for a program.
function(lumenpost_program)
    cmake_parse_arguments(M "WIDGETS;NO_PCH" "NAME" "DEPENDS;USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_executable(${M_NAME} ${sources})
    set_target_properties(${M_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
    _lumenpost_setup(${M_NAME} ${folder})
endfunction()

macro(_lumenpost_setup target folder)
    foreach(dependency IN LISTS M_DEPENDS)
        if(NOT TARGET ${dependency})
            message(FATAL_ERROR "${target} depends on ${dependency}, which is not declared before it: "
                                "modules may only depend on lower ones")
        endif()
    endforeach()

    set(root ${PROJECT_BINARY_DIR}/roots/${target})
    set(wanted)
    foreach(module IN ITEMS ${target} LISTS M_DEPENDS)
        get_target_property(moduleFolder ${module} LUMENPOST_FOLDER)
        get_target_property(moduleHeaders ${module} LUMENPOST_HEADERS)
        if(moduleHeaders)
            file(MAKE_DIRECTORY ${root}/${moduleFolder})
            foreach(header IN LISTS moduleHeaders)
                get_filename_component(name ${header} NAME)
                set(link ${root}/${moduleFolder}/${name})
                list(APPEND wanted ${link})
                if(NOT EXISTS ${link})
                    file(CREATE_LINK ${header} ${link} SYMBOLIC)
                endif()
            endforeach()
        endif()
    endforeach()
    file(GLOB_RECURSE existing ${root}/*.h)
    foreach(link IN LISTS existing)
        if(NOT link IN_LIST wanted)
            file(REMOVE ${link})
        endif()
    endforeach()

    target_include_directories(${target} PRIVATE ${root})
    # Privately: what a module builds on is its own affair, and comes along at the last link alone.
    target_link_libraries(${target} PUBLIC Qt6::Core Qt6::Gui QCoro::Coro PRIVATE ${M_DEPENDS} ${M_USES})
    if(M_WIDGETS)
        target_link_libraries(${target} PUBLIC Qt6::Widgets)
    endif()
    if(NOT M_NO_PCH)
        target_precompile_headers(${target} REUSE_FROM lumenpost_pch)
    endif()
endmacro()

# lumenpost_test(NAME name LABEL unit|ui|desktop|sway|kwin [DEPENDS …] [USES …] [SOURCES …])
#
# One test program from the .cpp files of the calling folder, or from SOURCES. unit needs no display, ui paints
# offscreen, desktop runs inside a private X11 desktop, sway and kwin inside a Wayland one.
function(lumenpost_test)
    cmake_parse_arguments(M "" "NAME;LABEL" "DEPENDS;USES;SOURCES" ${ARGN})
    if(NOT M_SOURCES)
        file(GLOB M_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    endif()
    set(target test_${M_NAME})
    add_executable(${target} ${M_SOURCES})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
    if(M_LABEL STREQUAL "unit")
        list(APPEND M_DEPENDS test_main)
    else()
        list(APPEND M_DEPENDS test_main_widgets)
    endif()
    _lumenpost_setup(${target} tests)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(${target} PRIVATE
        LUMENPOST_SOURCE_DIR="${PROJECT_SOURCE_DIR}" LUMENPOST_BINARY_DIR="${PROJECT_BINARY_DIR}"
        LUMENPOST_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PRIVATE GTest::gmock GTest::gtest Qt6::Test)
    if(M_LABEL STREQUAL "desktop")
        add_test(NAME ${M_NAME} COMMAND ${PROJECT_SOURCE_DIR}/tests/desktop/test-desktop run $<TARGET_FILE:${target}>)
    elseif(M_LABEL MATCHES "^(sway|kwin)$")
        add_test(NAME ${M_NAME}
                 COMMAND ${PROJECT_SOURCE_DIR}/tests/desktop/wayland-desktop run ${M_LABEL} $<TARGET_FILE:${target}>)
        set_tests_properties(${M_NAME} PROPERTIES SKIP_RETURN_CODE 77)
    else()
        add_test(NAME ${M_NAME} COMMAND ${target})
        # No display and no services of the machine it runs on.
        set_tests_properties(${M_NAME} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;DBUS_SESSION_BUS_ADDRESS=disabled:")
    endif()
    set_tests_properties(${M_NAME} PROPERTIES LABELS ${M_LABEL} TIMEOUT 240)
    if(LUMENPOST_SANITIZE STREQUAL "thread")
        set_property(TEST ${M_NAME} APPEND PROPERTY ENVIRONMENT
            "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/tsan-suppressions.txt:ignore_noninstrumented_modules=1:external_symbolizer_path=/usr/bin/llvm-symbolizer-19")
    endif()
endfunction()

# The headers that nearly every file really uses, compiled once for the whole program.
add_library(lumenpost_pch STATIC ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
set_target_properties(lumenpost_pch PROPERTIES AUTOMOC OFF)
function(lumenpost_finish_pch)
    target_link_libraries(lumenpost_pch PRIVATE Qt6::Core Qt6::Gui QCoro::Coro)
    set(headers
        <algorithm> <cmath> <expected> <functional> <memory> <optional> <span> <utility> <variant> <vector>
        <QByteArray> <QColor> <QDateTime> <QDir> <QFile> <QFuture> <QHash> <QImage> <QJsonArray> <QJsonDocument>
        <QJsonObject> <QList> <QObject> <QPointer> <QRectF> <QString> <QStringList> <QTimer> <QUrl>)
    target_precompile_headers(lumenpost_pch PRIVATE ${headers})
    string(SHA1 sum "${CMAKE_CXX_COMPILER_VERSION} ${Qt6_VERSION} ${QCoro6_VERSION} ${headers}")
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/CMakeFiles/lumenpost_pch.dir/cmake_pch.hxx.pch.sum CONTENT ${sum})
endfunction()

# lumenpost_bench(NAME name [DEPENDS …] [USES …] [WIDGETS]): a Google Benchmark program from the calling folder.
function(lumenpost_bench)
    cmake_parse_arguments(M "WIDGETS;NO_PCH" "NAME" "DEPENDS;USES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    add_executable(bench_${M_NAME} EXCLUDE_FROM_ALL ${sources})
    set_target_properties(bench_${M_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bench)
    _lumenpost_setup(bench_${M_NAME} bench)
    target_include_directories(bench_${M_NAME} PRIVATE ${PROJECT_SOURCE_DIR}/bench)
    target_link_libraries(bench_${M_NAME} PRIVATE benchmark::benchmark)
endfunction()

# lumenpost_fuzzer(NAME name SOURCES … [DEPENDS …]): a libFuzzer program, only in the fuzz preset.
function(lumenpost_fuzzer)
    cmake_parse_arguments(M "WIDGETS;NO_PCH" "NAME" "DEPENDS;USES;SOURCES" ${ARGN})
    if(NOT LUMENPOST_FUZZERS)
        return()
    endif()
    add_executable(fuzz_${M_NAME} ${M_SOURCES})
    set_target_properties(fuzz_${M_NAME} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
    _lumenpost_setup(fuzz_${M_NAME} tests)
    target_link_options(fuzz_${M_NAME} PRIVATE -fsanitize=fuzzer)
endfunction()
