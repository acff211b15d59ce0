#include <Corvex/media/PictureSizeValue.h>

#include <functional>

#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {

PictureSizeValue::~PictureSizeValue() = default;

std::string PictureSizeValue::description() const {
    return defaultText(size_.width) + " x " + defaultText(size_.height);
}

bool PictureSizeValue::isEqual(const Object& other) const {
    const auto* value = dynamic_cast<const PictureSizeValue*>(&other);
    return value != nullptr && value->size_ == size_;
}

std::size_t PictureSizeValue::hash() const {
    return combinedHash(std::hash<double>{}(size_.width), std::hash<double>{}(size_.height));
}

}  // namespace corvex::inline v0
