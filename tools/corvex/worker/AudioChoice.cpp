#include <tools/corvex/worker/AudioChoice.h>

#include <algorithm>
#include <iterator>

#include <Corvex/media/OrvaneAudioFormat.h>

namespace corvex::tool {
namespace {

struct CodeOfCodec {
    AVCodecID codec;
    FourCharacterCode code;
};

constexpr CodeOfCodec codes[] = {
    {AV_CODEC_ID_PCM_ALAW, "alaw"}, {AV_CODEC_ID_PCM_MULAW, "ulaw"},    {AV_CODEC_ID_ALAC, "alac"},
    {AV_CODEC_ID_AC3, "ac-3"},      {AV_CODEC_ID_ADPCM_IMA_QT, "ima4"}, {AV_CODEC_ID_MACE3, "MAC3"},
    {AV_CODEC_ID_MACE6, "MAC6"},    {AV_CODEC_ID_QCELP, "Qclp"},        {AV_CODEC_ID_QDM2, "QDM2"},
    {AV_CODEC_ID_QDMC, "QDMC"},     {AV_CODEC_ID_TWINVQ, "twvq"},       {AV_CODEC_ID_AMR_NB, "samr"},
    {AV_CODEC_ID_AMR_WB, "sawb"},   {AV_CODEC_ID_MP1, ".mp1"},          {AV_CODEC_ID_MP2, ".mp2"},
    {AV_CODEC_ID_MP3, ".mp3"},
};

FourCharacterCode aacCode(int profile) noexcept {
    switch (profile) {
        case FF_PROFILE_AAC_HE: return "aach";
        case FF_PROFILE_AAC_HE_V2: return "aacp";
        case FF_PROFILE_AAC_LD: return "aacl";
        case FF_PROFILE_AAC_ELD: return "aace";
        default: return "aac ";
    }
}

}  // namespace

FourCharacterCode coreAudioFormatOf(const AVCodecParameters& source) noexcept {
    if (source.codec_id == AV_CODEC_ID_AAC) return aacCode(source.profile);
    const auto* found =
        std::find_if(std::begin(codes), std::end(codes), [&](const auto& row) { return row.codec == source.codec_id; });
    if (found != std::end(codes)) return found->code;
    return isPcm(source.codec_id) ? FourCharacterCode("lpcm") : FourCharacterCode(0);
}

const AudioFormatSettings& chosenAudioFormat(const AVCodecParameters& source, bool preserveLossless,
                                             const OAVTranscodeArgumentFileFormatValue& file) {
    if (file == OAVWaveFileFormat) return audioFormatSettings(OAVLpcmAudioFormatValue);
    auto format = encodingReplacement(coreAudioFormatOf(source), preserveLossless);
    if (file == OAVMp4Format && format == OrvaneAudioFormat::lpcm) {
        format = preserveLossless ? OrvaneAudioFormat::appleLossless : OrvaneAudioFormat::aac;
    }
    const auto rows = allAudioFormatSettings();
    const auto chosen =
        std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.format == outputFormat(format); });
    return canEncode(*chosen) ? *chosen : audioFormatSettings(OAVAacAudioFormatValue);
}

}  // namespace corvex::tool
