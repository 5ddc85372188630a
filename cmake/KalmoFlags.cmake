# One interface target carries what every target of the project is compiled with.
add_library(kalmo_flags INTERFACE)
target_compile_features(kalmo_flags INTERFACE cxx_std_20)
target_compile_definitions(kalmo_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_STRICT_ITERATORS)

if(NOT MSVC)
    target_compile_options(kalmo_flags INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wfloat-conversion -Wnon-virtual-dtor
        -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wextra-semi -Wimplicit-fallthrough)
    if(KALMO_WERROR)
        target_compile_options(kalmo_flags INTERFACE -Werror)
    endif()
    if(KALMO_SANITIZE)
        # Instrumented and optimised in full is the code under test. Tests themselves are compiled faster so.
        set(test_code "$<BOOL:$<TARGET_PROPERTY:KALMO_TEST_CODE>>")
        target_compile_options(kalmo_flags INTERFACE
            -fsanitize=address "$<IF:${test_code},-O0,-fsanitize=undefined>"
            -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(kalmo_flags INTERFACE -fsanitize=address,undefined)
    endif()
    if(KALMO_FUZZ)
        target_compile_options(kalmo_flags INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endif()

# The builds of `./check` compile several files as one, which takes a third of the time. The others prove that each
# file stands by itself.
if(KALMO_SANITIZE OR NOT KALMO_GUI)
    set(KALMO_LARGE_PIECES ON)
endif()

# Every .cpp below the given folders belongs to the target, so no source file can be forgotten. Only main.cpp is named
# by the program itself, and CodePage.cpp by its library. Files that end in _unix.cpp or _windows.cpp belong to that
# platform alone.
function(kalmo_sources target)
    set(sources)
    foreach(folder IN LISTS ARGN)
        file(GLOB_RECURSE found CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp"
             "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.h")
        list(APPEND sources ${found})
    endforeach()
    list(FILTER sources EXCLUDE REGEX "/(main|CodePage)\\.cpp$")
    if(WIN32)
        list(FILTER sources EXCLUDE REGEX "_unix\\.(cpp|h)$")
    else()
        list(FILTER sources EXCLUDE REGEX "_windows\\.(cpp|h)$")
    endif()
    target_sources(${target} PRIVATE ${sources})
    get_target_property(kind ${target} TYPE)
    if(KALMO_LARGE_PIECES AND kind STREQUAL "STATIC_LIBRARY" AND NOT target STREQUAL "kalmo_test_support")
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
    endif()
endfunction()
