#include <Corvex/platform/Error.h>

#include <string>
#include <type_traits>

namespace corvex::inline v0 {

class SharedText::Block : public SharedState {
public:
    explicit Block(std::string_view text) : text_(text) {}
    [[nodiscard]] const char* text() const noexcept { return text_.c_str(); }

private:
    std::string text_;
};

SharedText::SharedText(std::string_view text) : block_(Shared<Block>::make(text)) {}

SharedText::SharedText(const SharedText& other) noexcept = default;

SharedText& SharedText::operator=(const SharedText& other) noexcept = default;

SharedText::~SharedText() = default;

const char* SharedText::text() const noexcept { return block_->text(); }

Error::~Error() = default;  // here, so that the type information has one home across libraries

DecodingError::DecodingError(std::string_view key, std::string_view problem)
    : Error("key '" + std::string(key) + "': " + std::string(problem)), key_(key) {}

DecodingError::~DecodingError() = default;

static_assert(std::is_nothrow_copy_constructible_v<DecodingError> && std::is_nothrow_copy_assignable_v<DecodingError>);

}  // namespace corvex::inline v0
