# The pictures of the application's resources (with their @2x variants for dense screens, and the
# window icon). Included by windows/CMakeLists.txt; an
# install rule can include it too and use KORVANE_PICTURE_FILES.
#
#   korvane_pictures  copies the committed PNGs to <build>/app/resources, beside the program
#   make_pictures     (opt-in) redraws the PNGs in this folder from make_pictures.cpp
include_guard(GLOBAL)

set(KORVANE_PICTURE_FILES
    ${CMAKE_CURRENT_LIST_DIR}/tformula.png
    ${CMAKE_CURRENT_LIST_DIR}/tformula@2x.png
    ${CMAKE_CURRENT_LIST_DIR}/tlarge.png
    ${CMAKE_CURRENT_LIST_DIR}/tlarge@2x.png
    ${CMAKE_CURRENT_LIST_DIR}/korvane-256.png
)

set(_korvane_picture_dir ${PROJECT_BINARY_DIR}/app/resources)
set(_korvane_picture_copies)
foreach(_picture IN LISTS KORVANE_PICTURE_FILES)
    get_filename_component(_name ${_picture} NAME)
    add_custom_command(
        OUTPUT ${_korvane_picture_dir}/${_name}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${_korvane_picture_dir}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${_picture} ${_korvane_picture_dir}/${_name}
        DEPENDS ${_picture}
        COMMENT "Copying ${_name} beside the program"
        VERBATIM)
    list(APPEND _korvane_picture_copies ${_korvane_picture_dir}/${_name})
endforeach()
add_custom_target(korvane_pictures ALL DEPENDS ${_korvane_picture_copies})

add_executable(korvane_make_pictures EXCLUDE_FROM_ALL ${CMAKE_CURRENT_LIST_DIR}/make_pictures.cpp)
target_link_libraries(korvane_make_pictures PRIVATE Qt6::Gui)
add_custom_target(make_pictures
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
            $<TARGET_FILE:korvane_make_pictures> ${CMAKE_CURRENT_LIST_DIR}
    DEPENDS korvane_make_pictures
    COMMENT "Drawing tformula.png and tlarge.png"
    VERBATIM)
