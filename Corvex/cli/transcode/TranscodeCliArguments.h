#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/cli/CliArgumentStore.h>
#include <Corvex/cli/transcode/AnchorOption.h>
#include <Corvex/exported/TranscodeVocabulary.h>
#include <Corvex/media/PictureSize.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/Json.h>
#include <Corvex/platform/Object.h>

namespace corvex::inline v0 {

enum class OrvaneUTType : std::uint8_t;

/// A transcode job's settings: a lookup from flag to value, parsed from an argument vector or from a ready lookup, and
/// rendered back into words. Every typed option is a view of that one lookup.
/// Parsing and rendering are not inverse: parsing joins the words that follow a flag, lower-cases all values but paths
/// and free text, expands presets and sets unknown flags aside; rendering gives every known flag with its value.
/// Nothing here fails: what cannot be used is dropped (stray words) or kept aside (unknown flags).
/// Threads: as a standard container; a text that is handed out is valid until the object changes.
class CORVEX_EXPORT TranscodeCliArguments : public Object, public CliArgumentStoreDefaults<TranscodeCliArguments> {
public:
    /// The word by which a host starts its own executable as the transcoder. No flag of any family.
    static constexpr std::string_view runInTranscodeModeFlag = "-isTranscoder";

    /// The flags by which keys are recognised: a key is known when one of them occurs in it, without regard to case.
    [[nodiscard]] static std::span<const std::string_view> allKnownCommandFlags() noexcept;
    [[nodiscard]] static const ArgumentLookup& orvaneCloudPresetArguments();
    [[nodiscard]] static const ArgumentLookup& orvaneProRes4444XQPresetArguments();

    TranscodeCliArguments() = default;
    /// Parses the words of a command line. A word that, trimmed, begins with "-" is a flag; the words up to the next
    /// flag are its value, joined by one blank. A value therefore cannot begin with "-". Of a repeated flag the last
    /// value counts. With `maintainOriginalOrdering` rendering keeps the order of the words (a repeated flag its first
    /// place) and appends what came from a preset.
    explicit TranscodeCliArguments(std::span<const std::string> cliArgs, bool maintainOriginalOrdering = false);
    /// Normalises a ready lookup in the same way. Of two keys that differ only in case and outer blanks the one that is
    /// lower-cased and trimmed already wins, else the last in order.
    explicit TranscodeCliArguments(const ArgumentLookup& argumentLookup);

    // The lookup.
    [[nodiscard]] const ArgumentLookup& flagValueLookup() const noexcept { return flagValueLookup_; }
    void setFlagValueLookup(ArgumentLookup lookup) noexcept { flagValueLookup_ = std::move(lookup); }
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return flagValueLookup_; }

    /// The value stored under `flag` (trimmed, but not lower-cased), or none. A switch has the empty value.
    [[nodiscard]] std::optional<std::string_view> argumentFlagValue(std::string_view flag) const;
    /// Stores the value exactly as given, or removes the flag. The one way by which every option writes.
    void setArgumentFlagValue(std::optional<std::string_view> value, std::string_view flag);
    [[nodiscard]] bool hasArgumentFlag(std::string_view flag) const;
    [[nodiscard]] bool hasVideoArgumentFlag(const OAVTranscodeVideoArgumentFlag& flag) const;

    // Entries that were not accepted.
    /// Their keys, or none when every flag was known; never an empty list.
    [[nodiscard]] std::optional<std::vector<std::string>> unknownFlags() const;
    [[nodiscard]] bool allFlagsAreValid() const noexcept;
    /// Calls `unknownFlagFound(key, value)` for each, both as std::string_view.
    template <class Handler>
    void enumerateUnknownFlags(Handler&& unknownFlagFound) const {
        if (!invalidKeyValueLookup_) return;
        for (const auto& [key, value] : *invalidKeyValueLookup_) {
            unknownFlagFound(std::string_view(key), std::string_view(value));
        }
    }

    // Rendering.
    /// Every flag followed by its value, also when that is empty: first the ordered flags, then the others by key.
    [[nodiscard]] std::vector<std::string> commandLineArguments() const;

    // Input files: one under "-in", or several under "-in_<group>_<position>" with decimal integers.
    using InputFileGroups = std::map<std::int64_t, std::vector<std::string>>;
    /// Paths by group number, each group in ascending position; none when there is no input. A plain "-in" is group 0
    /// and the only one.
    [[nodiscard]] std::optional<InputFileGroups> inputFileGroups() const;
    /// Calls `didFindGroup(paths, groupNumber)` for each group in ascending order.
    template <class Handler>
    void enumerateInputFileGroups(Handler&& didFindGroup) const {
        if (const auto groups = inputFileGroups()) {
            for (const auto& [number, paths] : *groups) didFindGroup(std::span<const std::string>(paths), number);
        }
    }
    /// All paths of all groups, each once, or none.
    [[nodiscard]] std::optional<std::vector<std::string>> inputFiles() const;
    /// Replaces "-in" and every readable numbered input by "-in_0_0", "-in_0_1" and so on; none or empty only removes.
    void setInputFiles(const std::optional<std::vector<std::string>>& files);
    [[nodiscard]] std::optional<std::string> firstInputFile() const;

    // General options.
    [[nodiscard]] std::optional<std::string_view> outputFile() const;
    void setOutputFile(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> progressFile() const;
    void setProgressFile(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> progressOutputPrefix() const;
    void setProgressOutputPrefix(std::optional<std::string_view> prefix);
    [[nodiscard]] std::optional<std::string_view> workDirectory() const;
    void setWorkDirectory(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> languageCode() const;
    void setLanguageCode(std::optional<std::string_view> code);
    [[nodiscard]] bool shouldOverwrite() const;
    void setShouldOverwrite(bool overwrites);
    [[nodiscard]] bool useLegacyPipeline() const;
    void setUseLegacyPipeline(bool usesLegacyPipeline);
    [[nodiscard]] std::optional<OAVTranscodeArgumentFileFormatValue> outputFileFormat() const;
    void setOutputFileFormat(const std::optional<OAVTranscodeArgumentFileFormatValue>& format);
    /// Stored under the key "ftype", deliberately without a leading "-": parsing never fills it ("-ftype" is another
    /// key), and it renders as that bare word. None when absent or no type's raw value.
    [[nodiscard]] std::optional<OrvaneUTType> explicitOutputFileType() const;
    void setExplicitOutputFileType(std::optional<OrvaneUTType> type);
    /// Whether the index of the file goes in front of its media ("-web").
    [[nodiscard]] bool prepareForWeb() const;
    void setPrepareForWeb(bool preparesForWeb);

    // Video options.
    [[nodiscard]] std::optional<OAVTranscodeArgumentVideoCodecValue> videoFormat() const;
    void setVideoFormat(const std::optional<OAVTranscodeArgumentVideoCodecValue>& codec);
    [[nodiscard]] std::optional<OAVTranscodeArgumentAspectRatioValue> aspectScaling() const;
    void setAspectScaling(const std::optional<OAVTranscodeArgumentAspectRatioValue>& scaling);
    [[nodiscard]] std::optional<VideoCropAnchor> videoCropAnchor() const;
    void setVideoCropAnchor(const std::optional<VideoCropAnchor>& anchor);
    /// "-dims", as "1920x1080"; none when absent or when one of the first two pieces is no number.
    [[nodiscard]] std::optional<PictureSize> videoDimensions() const;
    void setVideoDimensions(std::optional<PictureSize> size);
    /// "-vbr", in megabits per second; none when absent or no number.
    [[nodiscard]] std::optional<float> videoBitRate() const;
    void setVideoBitRate(std::optional<float> megabitsPerSecond);
    [[nodiscard]] std::optional<float> videoBitRateAsBitsPerSecond() const;

    // Audio options.
    [[nodiscard]] std::optional<OAVTranscodeArgumentAudioFormatValue> audioFormat() const;
    void setAudioFormat(const std::optional<OAVTranscodeArgumentAudioFormatValue>& format);
    /// "-asr", in samples per second; none when absent or no decimal integer.
    [[nodiscard]] std::optional<std::int64_t> sampleRate() const;
    void setSampleRate(std::optional<std::int64_t> samplesPerSecond);

    // As an object. Two are equal when their lookups, order and entries aside are.
    [[nodiscard]] std::string description() const override;
    [[nodiscard]] bool isEqual(const Object& other) const override;
    [[nodiscard]] std::size_t hash() const override;
    friend bool operator==(const TranscodeCliArguments& a, const TranscodeCliArguments& b) noexcept {
        return a.flagValueLookup_ == b.flagValueLookup_ && a.orderedFlags_ == b.orderedFlags_ &&
               a.invalidKeyValueLookup_ == b.invalidKeyValueLookup_;
    }

    /// Coded as "flagValueLookup", then "orderedFlags" and "invalidKeyValueLookup" if there are such. Decoding restores
    /// the fields as they were, without normalising again; it throws DecodingError naming the key at fault.
    friend CORVEX_EXPORT void to_json(Json& json, const TranscodeCliArguments& arguments);
    friend CORVEX_EXPORT void from_json(const Json& json, TranscodeCliArguments& arguments);

private:
    friend class TranscodeArgumentParser;

    ArgumentLookup flagValueLookup_;
    std::optional<std::vector<std::string>> orderedFlags_;
    std::optional<ArgumentLookup> invalidKeyValueLookup_;
};

static_assert(CliArgumentStore<TranscodeCliArguments>);

}  // namespace corvex::inline v0
