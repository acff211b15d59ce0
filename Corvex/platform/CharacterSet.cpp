#include <Corvex/platform/CharacterSet.h>

#include <utf8proc.h>

namespace corvex::inline v0 {

CharacterSet floatingPointDigitCharacterSet() noexcept {
    return CharacterSet([](char32_t character) noexcept {
        return character == U'.' || utf8proc_category(static_cast<utf8proc_int32_t>(character)) == UTF8PROC_CATEGORY_ND;
    });
}

}  // namespace corvex::inline v0
