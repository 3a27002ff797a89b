#include "platform/qt/picture.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <cmath>
#include <filesystem>

#include "platform/qt/qt_support.h"

namespace platform {

struct Picture::Impl {
    QImage image;
    std::string description;
};

Picture::Picture() : impl_(std::make_unique<Impl>()) {}

Picture::~Picture() = default;

const ClassInfo& Picture::StaticClass() {
    static const ClassInfo info{"Picture", &Object::StaticClass(), {}};
    return info;
}

QImage qt::ReadPng(const QString& path) {
    QImageReader reader(path, "png");
    reader.setAutoDetectImageFormat(false);
    QImage image = reader.read();
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return image;
}

// On a dense screen the "@2x" variant of a picture (tlarge@2x.png beside tlarge.png) is shown
// at the same size in points, so it stays sharp; without one the picture is scaled up. Asked
// only where it exists: Qt's reader warns on stderr about a file it cannot open.
static QImage ReadSharpest(const std::filesystem::path& path) {
    if (qApp != nullptr && qApp->devicePixelRatio() > 1.0) {
        auto dense = path;
        dense.replace_filename(path.stem().string() + "@2x" + path.extension().string());
        const QString densePath = QString::fromStdString(dense.string());
        QImage image = QFile::exists(densePath) ? qt::ReadPng(densePath) : QImage();
        if (!image.isNull()) {
            image.setDevicePixelRatio(2.0);
            return image;
        }
    }
    return qt::ReadPng(QString::fromStdString(path.string()));
}

QImage qt::ReadPicture(const std::string& name) {
    // Built into the program as Qt resources (resources/pictures.cmake).
    return name.empty() ? QImage() : ReadSharpest(std::filesystem::path(":/korvane") / name);
}

std::unique_ptr<Picture> Picture::_OpenFromApp(const std::string& name) {
    QImage image = qt::ReadPicture(name);
    if (image.isNull()) {
        return nullptr;  // missing or unreadable: the canvas stays empty
    }
    std::unique_ptr<Picture> picture(new Picture());
    picture->impl_->image = std::move(image);
    return picture;
}

const QImage& Picture::Image() const {
    return impl_->image;
}

std::int64_t Picture::Width() const {
    return std::lround(impl_->image.deviceIndependentSize().width());
}

void Picture::Description(const std::string& words) {
    impl_->description = words;
}

const std::string& Picture::Description() const {
    return impl_->description;
}

std::int64_t Picture::Height() const {
    return std::lround(impl_->image.deviceIndependentSize().height());
}

}  // namespace platform
