// The one menu bar of the run: five menus built in a fixed order by five builders, shared by the
// application object and the control window. Menu::Instance() is the accessor: it builds the bar
// on its first call and keeps it for the rest of the run. The run's initialisers set the instance
// to nil and build the class table before anything asks for the bar.
#pragma once

#include <memory>
#include <string>

#include "platform/qt/menu.h"

namespace korvane {

class Menu : public platform::Classed<Menu, platform::MenuBar> {
  public:
    static Menu& Instance();
    // Drops the instance, so that the next Instance() builds the bar anew: an initialiser of the
    // run, and between runs in tests.
    static void ResetImplicitInstance();

    static const platform::ClassInfo& StaticClass();  // the class table; base MenuBar

    void Constructor() override;  // Untitled0 to Untitled4, in that order

  private:
    void Untitled0();
    void Untitled1();
    void Untitled2();
    void Untitled3();
    void Untitled4();
    void AddTo(const std::string& menu, std::unique_ptr<platform::MenuItem> item);
};

}  // namespace korvane
