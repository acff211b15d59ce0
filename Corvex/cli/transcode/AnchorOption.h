#pragma once

#include <utility>

#include <Corvex/exported/CliFlag.h>
#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>
#include <Corvex/exported/OAVTranscodeTimecodeArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeWatermarkFileArgumentFlag.h>

namespace corvex::inline v0 {

/// An anchor together with the flag under which it is written, so that the anchor of one thing cannot be handed to
/// another. `Option` is the class that derives from this. A plain value; any text is an anchor, known or not.
template <class Option>
class AnchorOption {
public:
    /// Takes the anchor as it is; whether it is one of the nine, its user finds out.
    constexpr explicit AnchorOption(OAVTranscodeArgumentOverlayAnchorValue anchor) noexcept
        : anchorArgument_(std::move(anchor)) {}

    /// Which of the nine places; setting replaces the text and leaves the flag.
    [[nodiscard]] constexpr const OAVTranscodeArgumentOverlayAnchorValue& anchorArgument() const noexcept {
        return anchorArgument_;
    }
    /// Takes any text, too.
    constexpr void setAnchorArgument(OAVTranscodeArgumentOverlayAnchorValue anchor) noexcept {
        anchorArgument_ = std::move(anchor);
    }
    /// The anchor's text. Valid until the anchor is set or the object ends.
    [[nodiscard]] constexpr std::string_view rawValue() const noexcept { return anchorArgument_.rawValue(); }

    /// Letter for letter. Options of different things do not compare.
    friend constexpr bool operator==(const Option& a, const Option& b) noexcept {
        return a.anchorArgument() == b.anchorArgument();
    }

private:
    OAVTranscodeArgumentOverlayAnchorValue anchorArgument_;
};

/// The part of the picture that stays when it is cropped. Of a side that is not cut the anchor's word does not matter.
class VideoCropAnchor : public AnchorOption<VideoCropAnchor> {
public:
    using AnchorOption::AnchorOption;
    /// "-crop_anchor", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeVideoArgumentFlag videoFlag() noexcept {
        return OAVVideoAspectCropAnchorFlag;
    }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept {
        return OAVVideoAspectCropAnchorFlag.rawValue();
    }
};

/// Where the timecode is burnt in, within the picture's safe area.
class TimecodeBurnAnchor : public AnchorOption<TimecodeBurnAnchor> {
public:
    using AnchorOption::AnchorOption;
    /// "-tc_burn_anchor", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeTimecodeArgumentFlag tcFlag() noexcept {
        return OAVTimecodeBurnAnchorFlag;
    }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept { return OAVTimecodeBurnAnchorFlag.rawValue(); }
};

/// Where the image watermark is burnt in. The typed getter is called `tcFlag` for all burnt-in things. The text
/// watermark has no class of its own: TranscodeCliArguments gives its anchor as the bare value.
class WatermarkBurnAnchor : public AnchorOption<WatermarkBurnAnchor> {
public:
    using AnchorOption::AnchorOption;
    /// "-wmf_anchor", typed and as text.
    [[nodiscard]] static constexpr OAVTranscodeWatermarkFileArgumentFlag tcFlag() noexcept {
        return OAVWatermarkFileBurnAnchorFlag;
    }
    [[nodiscard]] constexpr std::string_view cliFlag() const noexcept {
        return OAVWatermarkFileBurnAnchorFlag.rawValue();
    }
};

// Each can be written into arguments by its own flag.
static_assert(CLIArgumentOption<VideoCropAnchor> && CLIArgumentOption<TimecodeBurnAnchor> &&
              CLIArgumentOption<WatermarkBurnAnchor>);

}  // namespace corvex::inline v0
