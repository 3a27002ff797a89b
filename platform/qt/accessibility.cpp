#include <QString>
#include <QWidget>

#include "platform/qt/controls.h"
#include "platform/qt/runtime.h"

namespace platform {

void RectControl::AccessibleName(const std::string& name) {
    _UITrap();
    if (widget_ != nullptr) {
        widget_->setAccessibleName(QString::fromStdString(name));
    }
}

}  // namespace platform
