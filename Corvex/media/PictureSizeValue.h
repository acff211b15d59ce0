#pragma once

#include <Corvex/media/PictureSize.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

/// A picture size as an object, for callers that handle every value through Object. Immutable; any thread.
class CORVEX_EXPORT PictureSizeValue final : public Object {
public:
    /// Any two numbers; neither sign nor size is checked.
    explicit PictureSizeValue(PictureSize size) noexcept : size_(size) {}
    ~PictureSizeValue() override;
    PictureSizeValue(const PictureSizeValue&) = default;
    PictureSizeValue& operator=(const PictureSizeValue&) = default;

    /// As given, in pixels.
    [[nodiscard]] PictureSize sizeValue() const noexcept { return size_; }

    /// "1920.0 x 1080.0".
    [[nodiscard]] std::string description() const override;
    /// Only to another of this class, by both sides exactly.
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;

private:
    PictureSize size_;
};

}  // namespace corvex::inline v0
