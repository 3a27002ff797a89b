#include <QString>
#include <QWidget>

#include "platform/qt/controls.h"

namespace platform {

void RectControl::AccessibleName(const std::string& name) {
    widget_->setAccessibleName(QString::fromStdString(name));
}

}  // namespace platform
