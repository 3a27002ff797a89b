// Pictures built into the program, as canvases show them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/core/object.h"

class QImage;

namespace platform {

// A picture from the application's resources.
class Picture : public Classed<Picture> {
  public:
    ~Picture() override;
    static const ClassInfo& StaticClass();
    // The picture of that file name among the pictures built into the program, or nullptr when it
    // is missing or unreadable.
    static std::unique_ptr<Picture> _OpenFromApp(const std::string& name);
    std::int64_t Width() const;
    std::int64_t Height() const;
    // A few words that say what the picture shows, for those who cannot see it.
    void Description(const std::string& words);
    const std::string& Description() const;
    // The image a canvas draws, shared with it.
    const QImage& Image() const;

  private:
    Picture();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace platform
