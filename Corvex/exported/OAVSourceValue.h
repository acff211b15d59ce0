#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A value that stands for whatever the source has. Any text is legal.
class OAVSourceValue : public TypedString<OAVSourceValue> {
public:
    using TypedString::TypedString;
};

inline constexpr OAVSourceValue OAVCopySourceValue{"copy"};

}  // namespace corvex::inline v0
