# The pictures of the application's resources, built into the program as Qt resources under
# ":/korvane" (with their @2x variants for dense screens, and the window icon in two sizes). Included by
# windows/CMakeLists.txt.
#
#   korvane_add_pictures(target)  puts the pictures into that target's resources
#   make_pictures                 (opt-in) redraws the PNGs in this folder from make_pictures.cpp
include_guard(GLOBAL)

function(korvane_add_pictures target)
    qt_add_resources(${target} korvane_pictures
        PREFIX /korvane
        BASE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}
        FILES
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/tformula.png
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/tformula@2x.png
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/tlarge.png
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/tlarge@2x.png
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/korvane-64.png
            ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/korvane-256.png)
endfunction()

add_executable(korvane_make_pictures EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/make_pictures.cpp)
target_link_libraries(korvane_make_pictures PRIVATE Qt6::Gui)
add_custom_target(make_pictures
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
            $<TARGET_FILE:korvane_make_pictures> ${CMAKE_CURRENT_LIST_DIR}
    DEPENDS korvane_make_pictures
    COMMENT "Drawing tformula.png and tlarge.png"
    VERBATIM)
