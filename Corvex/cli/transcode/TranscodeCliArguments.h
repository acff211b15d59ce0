#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/cli/ArgumentLookup.h>
#include <Corvex/cli/CliArgumentStore.h>
#include <Corvex/cli/transcode/AnchorOption.h>
#include <Corvex/cli/transcode/TimecodeSource.h>
#include <Corvex/cli/transcode/TranscodeAudioQuality.h>
#include <Corvex/color/Color.h>
#include <Corvex/color/OrvanePixelColorRange.h>
#include <Corvex/color/OrvaneVideoColorSpace.h>
#include <Corvex/exported/OAVTranscodeArgumentAspectRatioValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioChannelLayoutValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/media/PictureSizeValue.h>
#include <Corvex/media/VideoDimensions.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/FilesystemForward.h>
#include <Corvex/platform/Object.h>
#include <Corvex/timing/DropFrameState.h>

namespace corvex::inline v0 {

enum class OrvaneUTType : std::uint8_t;
enum class OrvaneVideoColorMatrix : std::uint8_t;
enum class OrvanePixelTransferFunction : std::uint8_t;
enum class AudioChannelLabel : std::uint8_t;
class GpuDevice;
class Number;
struct TimecodeComponents;
struct TranscodeAudioDetail;
struct TranscodeVideoDetail;
struct TranscodeTimecodeDetail;
struct TranscodeWatermarkImageDetail;
struct TranscodeWatermarkTextDetail;

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
    [[nodiscard]] static const ArgumentLookup& orvaneCloudPresetArguments();  ///< What "orvane_cloud" stands for.
    /// What "orvane_4444xq" stands for.
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
    /// The known flags with their values, in test form; argumentLookup() is the same. Setting replaces them without
    /// normalising, and leaves the order and the unknown entries as they are.
    [[nodiscard]] const ArgumentLookup& flagValueLookup() const noexcept { return flagValueLookup_; }
    void setFlagValueLookup(ArgumentLookup lookup) noexcept { flagValueLookup_ = std::move(lookup); }
    [[nodiscard]] const ArgumentLookup& argumentLookup() const noexcept { return flagValueLookup_; }

    /// The value stored under `flag` (trimmed, but not lower-cased), or none. A switch has the empty value.
    [[nodiscard]] std::optional<std::string_view> argumentFlagValue(std::string_view flag) const;
    /// Stores the value exactly as given, or removes the flag. The one way by which every option writes.
    void setArgumentFlagValue(std::optional<std::string_view> value, std::string_view flag);
    /// Whether argumentFlagValue() finds the flag, also with an empty value.
    [[nodiscard]] bool hasArgumentFlag(std::string_view flag) const;
    /// The same by a constant instead of its text.
    [[nodiscard]] bool hasVideoArgumentFlag(const OAVTranscodeVideoArgumentFlag& flag) const;

    // Entries that were not accepted.
    /// Their keys, or none when every flag was known; never an empty list.
    [[nodiscard]] std::optional<std::vector<std::string>> unknownFlags() const;
    [[nodiscard]] bool allFlagsAreValid() const noexcept;  ///< Whether unknownFlags() gives none.
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
    /// All paths of all groups, each once, in the order of groups and positions, or none.
    [[nodiscard]] std::optional<std::vector<std::string>> inputFiles() const;
    /// Replaces "-in" and every readable numbered input by "-in_0_0", "-in_0_1" and so on; none or empty only removes.
    void setInputFiles(const std::optional<std::vector<std::string>>& files);
    [[nodiscard]] std::optional<std::string> firstInputFile() const;  ///< Of the lowest group and position.

    // General options.
    [[nodiscard]] std::optional<std::string_view> outputFile() const;  ///< "-out".
    void setOutputFile(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> progressFile() const;  ///< "-progress_file".
    void setProgressFile(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> progressOutputPrefix() const;  ///< "-progress_prefix".
    void setProgressOutputPrefix(std::optional<std::string_view> prefix);
    [[nodiscard]] std::optional<std::string_view> workDirectory() const;  ///< "-work_dir".
    void setWorkDirectory(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<std::string_view> languageCode() const;  ///< "-lang_code", ISO 639-2.
    void setLanguageCode(std::optional<std::string_view> code);
    [[nodiscard]] bool shouldOverwrite() const;  ///< "-overwrite".
    void setShouldOverwrite(bool overwrites);
    [[nodiscard]] bool useLegacyPipeline() const;  ///< "-legacy-pipeline".
    void setUseLegacyPipeline(bool usesLegacyPipeline);
    [[nodiscard]] std::optional<OAVTranscodeArgumentFileFormatValue> outputFileFormat() const;  ///< "-file_format".
    void setOutputFileFormat(const std::optional<OAVTranscodeArgumentFileFormatValue>& format);
    /// Stored under the key "ftype", deliberately without a leading "-": parsing never fills it ("-ftype" is another
    /// key), and it renders as that bare word. None when absent or no type's raw value.
    [[nodiscard]] std::optional<OrvaneUTType> explicitOutputFileType() const;
    void setExplicitOutputFileType(std::optional<OrvaneUTType> type);
    /// "-web": whether the index of the file goes in front of its media.
    [[nodiscard]] bool prepareForWeb() const;
    void setPrepareForWeb(bool preparesForWeb);

    // Video options. A setter with none removes the flag; a getter is none when the flag is absent or its text is no
    // value of the type. Decimal numbers and integers are the whole text, whatever the process's locale.
    /// How many frames may be in flight unless a job says otherwise: the machine's processors, until a host sets it.
    [[nodiscard]] static std::uint64_t defaultVideoFrameCapacity();
    static void setDefaultVideoFrameCapacity(std::uint64_t frames);
    /// "-ovw" and "-ovh" above this are pixels, up to it factors.
    static constexpr double legacyOutputDimensionsScaleThreshold = 16.0;

    [[nodiscard]] std::optional<OAVTranscodeArgumentVideoCodecValue> videoFormat() const;  ///< "-vcodec".
    void setVideoFormat(const std::optional<OAVTranscodeArgumentVideoCodecValue>& codec);
    [[nodiscard]] std::optional<OAVTranscodeArgumentAspectRatioValue> aspectScaling() const;  ///< "-aspect_scaling".
    void setAspectScaling(const std::optional<OAVTranscodeArgumentAspectRatioValue>& scaling);
    [[nodiscard]] std::optional<VideoCropAnchor> videoCropAnchor() const;  ///< "-crop_anchor".
    void setVideoCropAnchor(const std::optional<VideoCropAnchor>& anchor);
    [[nodiscard]] std::optional<OrvaneVideoColorSpace> colorSpace() const;  ///< "-c_space".
    void setColorSpace(std::optional<OrvaneVideoColorSpace> space);
    [[nodiscard]] std::optional<OrvaneVideoColorMatrix> colorMatrix() const;  ///< "-c_matrix".
    void setColorMatrix(std::optional<OrvaneVideoColorMatrix> matrix);
    [[nodiscard]] std::optional<OrvanePixelTransferFunction> colorTransferFunction() const;  ///< "-c_transfer".
    void setColorTransferFunction(std::optional<OrvanePixelTransferFunction> function);
    [[nodiscard]] std::optional<OrvanePixelColorRange> colorRange() const;  ///< "-v_colrange".
    void setColorRange(std::optional<OrvanePixelColorRange> range);
    /// Frames per second.
    [[nodiscard]] std::optional<float> videoFrameRate() const;
    void setVideoFrameRate(std::optional<float> framesPerSecond);
    /// Megabits per second.
    [[nodiscard]] std::optional<float> videoBitRate() const;
    void setVideoBitRate(std::optional<float> megabitsPerSecond);
    [[nodiscard]] std::optional<float> videoBitRateAsBitsPerSecond() const;  ///< The same in bits a second.
    /// Bits of a component.
    [[nodiscard]] std::optional<std::int64_t> videoBitDepth() const;
    void setVideoBitDepth(std::optional<std::int64_t> bits);
    /// Frames from one key frame to the next.
    [[nodiscard]] std::optional<std::int64_t> keyFrames() const;
    void setKeyFrames(std::optional<std::int64_t> frames);
    /// Frames after which the output ends.
    [[nodiscard]] std::optional<std::int64_t> maxFrames() const;
    void setMaxFrames(std::optional<std::int64_t> frames);
    [[nodiscard]] std::optional<std::string_view> videoProfile() const;  ///< "-vprofile".
    void setVideoProfile(std::optional<std::string_view> profile);
    [[nodiscard]] std::optional<std::string_view> videoDecodeEngineValue() const;  ///< "-v_decoder".
    void setVideoDecodeEngineValue(std::optional<std::string_view> engine);
    [[nodiscard]] std::optional<std::string_view> audioDecodeEngineValue() const;  ///< "-a_decoder".
    void setAudioDecodeEngineValue(std::optional<std::string_view> engine);
    [[nodiscard]] bool gpuDecode() const;  ///< "-gpu_decoding".
    void setGpuDecode(bool uses);
    [[nodiscard]] bool gpuEncode() const;  ///< "-gpu_encoding".
    void setGpuEncode(bool uses);
    /// True whatever the flag's value: "-preserve_log false" is true.
    [[nodiscard]] bool preserveLogEncoding() const;
    void setPreserveLogEncoding(bool preserves);
    [[nodiscard]] bool unboundVideoFrameCapacity() const;  ///< "-v_nocap".
    void setUnboundVideoFrameCapacity(bool isUnbound);
    [[nodiscard]] bool useREDPremiumDecode() const;  ///< "-red_premium".
    void setUseREDPremiumDecode(bool uses);

    /// "-dims", as "1920x1080"; none when one of the first two pieces between "x" is no number.
    [[nodiscard]] std::optional<PictureSize> videoDimensions() const;
    void setVideoDimensions(std::optional<PictureSize> size);
    [[nodiscard]] std::optional<PictureSizeValue> dimensionsSizeValue() const;  ///< As an object.
    /// "-vscale", a factor on the input's size.
    [[nodiscard]] std::optional<float> explicitVideoScaling() const;
    void setExplicitVideoScaling(std::optional<float> factor);
    /// With "-vscale" and a known input: that size scaled, rounded down, limited to 0 to 2^31 - 1, and odd sides raised
    /// by one. Otherwise explicitOutputResolution().
    [[nodiscard]] std::optional<VideoDimensions> outputResolution(
        const std::optional<PictureSize>& knownInputResolution) const;
    /// Each side on its own: "-ovw" or "-ovh" above legacyOutputDimensionsScaleThreshold is pixels; above 0 and up to
    /// it a factor on that side of "-dims". Absent or unusable: "-dims" times "-vscale" if that lies in the same range,
    /// else "-dims". Rounded down; none when a side is missing or below 1.
    [[nodiscard]] std::optional<VideoDimensions> explicitOutputResolution() const;
    /// Writes "-dims" and removes "-ovw", "-ovh" and "-vscale"; none removes all four.
    void setExplicitOutputResolution(std::optional<VideoDimensions> resolution);

    /// Frames in flight: the largest number with "-v_nocap"; else "-v_frame_cap" if it is an unsigned decimal integer;
    /// else defaultVideoFrameCapacity().
    [[nodiscard]] std::uint64_t videoFrameCapacity() const;
    void setVideoFrameCapacity(std::uint64_t frames);
    /// Bytes that frames in flight may take.
    [[nodiscard]] std::optional<std::int64_t> maxVideoFrameMemory() const;
    void setMaxVideoFrameMemory(std::optional<std::int64_t> bytes);
    /// "key=value:key=value" (see parseDictionary).
    [[nodiscard]] std::optional<std::map<std::string, std::string>> additionalDecodeOptions() const;
    void setAdditionalDecodeOptions(const std::optional<std::map<std::string, std::string>>& options);
    [[nodiscard]] std::optional<std::filesystem::path> lutFile() const;  ///< "-clut".
    void setLutFile(const std::optional<std::filesystem::path>& file);
    /// The numbers in the list under "-gpu_trans"; pieces that are no number (names of platforms) are skipped.
    [[nodiscard]] std::optional<std::vector<std::uint64_t>> gpuTransformationDeviceIDs() const;
    void setGpuTransformationDeviceIDs(const std::optional<std::vector<std::uint64_t>>& identifiers);
    /// The first of them, as the provider that the host has set resolves it; nullptr when there is none.
    [[nodiscard]] std::shared_ptr<GpuDevice> gpuTransformationDevice() const;

    // Audio options, in the same manner.
    [[nodiscard]] std::optional<OAVTranscodeArgumentAudioFormatValue> audioFormat() const;  ///< "-acodec".
    void setAudioFormat(const std::optional<OAVTranscodeArgumentAudioFormatValue>& format);
    [[nodiscard]] std::optional<OAVTranscodeArgumentAudioChannelLayoutValue> channelLayout() const;  ///< "-acl".
    void setChannelLayout(const std::optional<OAVTranscodeArgumentAudioChannelLayoutValue>& layout);
    [[nodiscard]] std::optional<TranscodeAudioQuality> audioQuality() const;  ///< "-aqual".
    void setAudioQuality(std::optional<TranscodeAudioQuality> quality);
    /// Bits per second.
    [[nodiscard]] std::optional<std::int64_t> audioBitRate() const;
    void setAudioBitRate(std::optional<std::int64_t> bitsPerSecond);
    /// Samples per second.
    [[nodiscard]] std::optional<std::int64_t> sampleRate() const;
    void setSampleRate(std::optional<std::int64_t> samplesPerSecond);
    [[nodiscard]] std::optional<std::int64_t> audioBitsPerChannel() const;  ///< "-abpc", bits.
    void setAudioBitsPerChannel(std::optional<std::int64_t> bits);
    [[nodiscard]] std::optional<std::int64_t> channelLayoutTag() const;  ///< "-acl_tag".
    void setChannelLayoutTag(std::optional<std::int64_t> tag);
    /// The channels of "-acl": its number, or that of the layout it names.
    [[nodiscard]] std::optional<std::int64_t> outputChannels() const;
    /// "-acl_bitmap": the channels by their short names; none when one of them is no label.
    [[nodiscard]] std::optional<std::vector<AudioChannelLabel>> channelLayoutBitmap() const;
    void setChannelLayoutBitmap(const std::optional<std::vector<AudioChannelLabel>>& labels);
    [[nodiscard]] std::optional<std::string_view> audioLanguageCode() const;  ///< "-alang_code", ISO 639-2.
    void setAudioLanguageCode(std::optional<std::string_view> code);
    [[nodiscard]] bool audioOutputIsDiscrete() const;  ///< "-adiscrete".
    void setAudioOutputIsDiscrete(bool isDiscrete);
    [[nodiscard]] bool audioOutputChannelsMatchSource() const;  ///< "-a_ch_match".
    void setAudioOutputChannelsMatchSource(bool match);
    /// Tracks to leave out, numbered from 0, by input file: "-ac_omit_<file>" holds a list, plain "-ac_omit" that of file
    /// 0. Pieces that are no number are skipped.
    [[nodiscard]] std::map<std::uint64_t, std::set<std::uint64_t>> ignoredAudioFileTracks() const;
    /// Calls `block(file, tracks)` for each file, ascending, with its sorted tracks.
    template <class Block>
    void enumerateIgnoredAudioFileTracks(Block&& block) const {
        for (const auto& [file, tracks] : ignoredAudioFileTracks()) {
            block(file, std::vector<std::uint64_t>(tracks.begin(), tracks.end()));
        }
    }
    /// An empty set removes the file's flag.
    void setIgnoredAudioTracks(std::uint64_t file, const std::set<std::uint64_t>& tracks);

    // Timecode options.
    /// The case of the first flag present of "-tc_match", "-tc_creation", "-tc_custom"; `match` when there is none.
    [[nodiscard]] TimecodeSource timecodeSource() const;
    /// Removes the three flags and stores that of `source`; for `custom` with the text that was stored before, or else
    /// with 00:00:00:00.
    void setTimecodeSource(TimecodeSource source);
    /// The same for `custom` with the text of this timecode.
    void setTimecodeSource(const TimecodeComponents& custom);
    /// The text of "-tc_custom".
    [[nodiscard]] std::optional<std::string_view> timecode() const;
    void setTimecode(std::optional<std::string_view> text);
    /// Frames per second.
    [[nodiscard]] std::optional<float> timecodeFrameRate() const;
    void setTimecodeFrameRate(std::optional<float> framesPerSecond);
    /// "-tc_drop", else "-tc_non_drop", else the state of a "-tc_custom" of proper form, else unknown.
    [[nodiscard]] DropFrameState timecodeDropFrameState() const;
    /// Removes both flags and stores the matching one (unknown: none); "-tc_custom" stays as it is.
    void setTimecodeDropFrameState(DropFrameState state);
    [[nodiscard]] bool addTimecodeTrack() const;  ///< "-tc_track".
    void setAddTimecodeTrack(bool adds);
    [[nodiscard]] bool addTimecodeBurn() const;  ///< "-tc_burn".
    void setAddTimecodeBurn(bool adds);
    [[nodiscard]] bool bypassNTSCDrop() const;  ///< "-tc_no_ntsc".
    void setBypassNTSCDrop(bool bypasses);
    /// Whether there is a timecode track or burn-in. Setting true adds the track if there is neither; false removes both.
    [[nodiscard]] bool includeTimecode() const;
    void setIncludeTimecode(bool includes);
    [[nodiscard]] std::optional<TimecodeBurnAnchor> timecodeBurnAnchor() const;  ///< "-tc_burn_anchor".
    void setTimecodeBurnAnchor(const std::optional<TimecodeBurnAnchor>& anchor);
    [[nodiscard]] std::optional<std::int64_t> timecodeBurnFontSize() const;  ///< "-tc_burn_size", pixels.
    void setTimecodeBurnFontSize(std::optional<std::int64_t> size);
    [[nodiscard]] std::optional<Number> timecodeBurnFontSizeNumber() const;  ///< As an object.
    // Colours are "r g b", three decimals from 0 to 1 in sRGB. A colour without components is logged and not written.
    [[nodiscard]] std::optional<Color> timecodeBurnFontColor() const;  ///< "-tc_burn_font_rgb".
    void setTimecodeBurnFontColor(const std::optional<Color>& color);
    [[nodiscard]] std::optional<Color> timecodeBurnBoxColor() const;  ///< "-tc_burn_box_rgb".
    void setTimecodeBurnBoxColor(const std::optional<Color>& color);

    // Watermark options.
    /// The path in lower case where it came through parsing, which lower-cases this value on purpose.
    [[nodiscard]] std::optional<std::string_view> watermarkFilePath() const;
    void setWatermarkFilePath(std::optional<std::string_view> path);
    [[nodiscard]] std::optional<WatermarkBurnAnchor> watermarkFileAnchor() const;  ///< "-wmf_anchor".
    void setWatermarkFileAnchor(const std::optional<WatermarkBurnAnchor>& anchor);
    /// A factor above 0; 1 is the image's own size.
    [[nodiscard]] std::optional<double> watermarkFileScale() const;
    void setWatermarkFileScale(std::optional<double> factor);
    [[nodiscard]] bool addWatermarkText() const;  ///< "-wmt_burn".
    void setAddWatermarkText(bool adds);
    [[nodiscard]] std::optional<std::string_view> watermarkText() const;  ///< "-wmt_text".
    void setWatermarkText(std::optional<std::string_view> text);
    [[nodiscard]] std::optional<std::int64_t> watermarkTextBurnFontSize() const;  ///< "-wmt_size", pixels.
    void setWatermarkTextBurnFontSize(std::optional<std::int64_t> size);
    [[nodiscard]] std::optional<OAVTranscodeArgumentOverlayAnchorValue> watermarkTextAnchor()
        const;  ///< "-wmt_anchor".
    void setWatermarkTextAnchor(const std::optional<OAVTranscodeArgumentOverlayAnchorValue>& anchor);
    [[nodiscard]] std::optional<Color> watermarkTextFontColor() const;  ///< "-wmt_font_rgb".
    void setWatermarkTextFontColor(const std::optional<Color>& color);
    [[nodiscard]] std::optional<Color> watermarkTextBoxColor() const;  ///< "-wmt_box_rgb".
    void setWatermarkTextBoxColor(const std::optional<Color>& color);

    // Copies what a detail record has.
    void update(const TranscodeAudioDetail& fromAudioDetail);  ///< A switch that is present and false removes its flag.
    void update(const TranscodeVideoDetail& fromVideoDetail);
    void update(const TranscodeTimecodeDetail& fromTimecodeDetail);
    void update(const TranscodeWatermarkImageDetail& fromWatermarkImageDetail);
    void update(const TranscodeWatermarkTextDetail& fromWatermarkTextDetail);

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
    template <class JsonType>
    friend CORVEX_EXPORT void to_json(JsonType& json, const TranscodeCliArguments& arguments);
    template <class JsonType>
    friend CORVEX_EXPORT void from_json(const JsonType& json, TranscodeCliArguments& arguments);

private:
    friend class TranscodeArgumentParser;

    ArgumentLookup flagValueLookup_;
    std::optional<std::vector<std::string>> orderedFlags_;
    std::optional<ArgumentLookup> invalidKeyValueLookup_;
};

static_assert(CliArgumentStore<TranscodeCliArguments>);

}  // namespace corvex::inline v0
