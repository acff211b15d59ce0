#pragma once

#include <Corvex/platform/TypedString.h>

namespace corvex::inline v0 {

/// A value that stands for whatever the source has, where a flag of any family would otherwise state it. Any text is
/// legal.
class OAVSourceValue : public TypedString<OAVSourceValue> {
public:
    using TypedString::TypedString;
};

/// Take it from the source, unchanged.
inline constexpr OAVSourceValue OAVCopySourceValue{"copy"};

}  // namespace corvex::inline v0
