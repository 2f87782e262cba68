# One folder is one static library: every .cpp in it, and the libraries it may include from.
# Flags that decide the program's numbers stand here too, so that no target can miss them.

add_library(veloran_flags INTERFACE)
target_compile_options(veloran_flags INTERFACE
    # A fused multiply-add rounds once where two operations round twice: without this the same
    # element set gives other digits on another processor.
    -ffp-contract=off
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wconversion
    # A newer compiler or library warns about more: that is for us to see, and no user's build to end.
    $<$<BOOL:${VELORAN_WARNINGS_ARE_ERRORS}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -fsanitize and -O3 make these two warn about code that is right (GCC bugs 105329, 105562).
    target_compile_options(veloran_flags INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()
if(VELORAN_SANITIZE)
    target_compile_options(veloran_flags INTERFACE
        -fsanitize=${VELORAN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(veloran_flags INTERFACE -fsanitize=${VELORAN_SANITIZE})
endif()

# veloran_library(<folder> [DEPENDS <target>...])
function(veloran_library folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    if(sources)
        add_library(veloran_${folder} STATIC ${sources})
        set(scope PUBLIC)
    else()
        add_library(veloran_${folder} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(veloran_${folder} ${scope} "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(veloran_${folder} ${scope} veloran_flags ${ARG_DEPENDS})
endfunction()

# veloran_tests(<folder> [DEPENDS <target>...])
# Ordinary tests are *_test.cpp, tests that read golden files *_vectors.cpp (label "vectors"),
# tests against real servers, files and windows *_real.cpp (label "real").
function(veloran_tests folder)
    cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
    set(timeout 300)  # seconds
    if(VELORAN_SANITIZE)
        set(timeout 1200)
    endif()
    foreach(kind test vectors real)
        file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*_${kind}.cpp")
        if(NOT sources)
            continue()
        endif()
        set(target ${folder}_${kind})
        add_executable(${target} ${sources})
        target_link_libraries(${target} PRIVATE veloran_flags veloran_test_support ${ARG_DEPENDS}
                                                GTest::gmock)
        if(VELORAN_SANITIZE)
            # What is tested keeps its optimisation; the tests compile in half the time without.
            target_compile_options(${target} PRIVATE -O0)
        endif()
        # A folder that needs more than the stock runner (a QApplication, say) brings its own.
        if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/test_main.cpp")
            target_sources(${target} PRIVATE test_main.cpp)
        else()
            target_link_libraries(${target} PRIVATE GTest::gmock_main)
        endif()
        target_compile_definitions(${target} PRIVATE
            VELORAN_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VELORAN_BINARY_DIR="${PROJECT_BINARY_DIR}")
        gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST
            PROPERTIES LABELS "${kind}" TIMEOUT ${timeout} ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    endforeach()
endfunction()
