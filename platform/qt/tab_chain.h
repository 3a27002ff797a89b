// The Tab chain of a window's controls (the order in tab_order.h) and the frames that hold radio
// buttons. Private to platform/qt.
#pragma once

#include <vector>

class QWidget;

namespace platform {

class Window;

namespace qt {

// The window's Tab chain, and Qt's chain set to it.
std::vector<QWidget*> TabChain(const Window& window);
void RebuildTabChain(Window& window);
// Tab (forward) or Shift+Tab: the focus to the next stop of the chain (TabStop, shown, enabled;
// one per radio group). False when the window has none.
bool MoveFocusAlongTabChain(const Window& window, bool forward);
// Moves the window's radio buttons into the frame whose rectangle holds them.
void GatherRadioButtonsIntoFrames(Window& window);

}  // namespace qt
}  // namespace platform
