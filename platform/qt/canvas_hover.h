// Whether the pointer is over a canvas, which its MouseEnter and MouseExit tell. It is decided
// from the pointer events the windowing system gives the canvas's window (its moves, and the
// window's enter and leave), each compared with the canvas's place in the window. Qt's own Enter
// and Leave for widgets are not used: when a menu or a message box closes, Qt makes up an Enter
// for the widget it takes to be under the pointer (on Wayland from a place it only guesses) and
// may send no Leave after it, so a title's hover stayed on after the pointer had gone.
//
// What follows from it, on X11 and on Wayland alike: every enter is followed by one exit; a
// canvas under an open menu, or in a window that a message box blocks, is not under the pointer
// (its window hears nothing then, and Qt tells it that the pointer left); when the menu goes, the
// window's next pointer event says where the pointer is, and when the box goes, the pointer's last
// known place does.
#pragma once

class QWidget;

namespace platform::qt {

class CanvasWidget;

// Makes the canvas's MouseEnter and MouseExit follow the pointer as above, for as long as the
// widget lives.
void FollowPointer(CanvasWidget& canvas);

}  // namespace platform::qt
