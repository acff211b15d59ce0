// Copies detail records into the options of TranscodeCliArguments.

#include <Corvex/cli/transcode/TranscodeCliArguments.h>
#include <Corvex/cli/transcode/TranscodeDetails.h>

namespace corvex::inline v0 {

using Arguments = TranscodeCliArguments;

void Arguments::update(const TranscodeAudioDetail& fromAudioDetail) {
    if (fromAudioDetail.audioFormat) setAudioFormat(*fromAudioDetail.audioFormat);
    if (fromAudioDetail.audioBitRate) setAudioBitRate(*fromAudioDetail.audioBitRate);
    if (fromAudioDetail.sampleRate) setSampleRate(*fromAudioDetail.sampleRate);
    if (fromAudioDetail.audioBitsPerChannel) setAudioBitsPerChannel(*fromAudioDetail.audioBitsPerChannel);
    if (fromAudioDetail.audioQuality) setAudioQuality(*fromAudioDetail.audioQuality);
    if (fromAudioDetail.channelLayout) setChannelLayout(*fromAudioDetail.channelLayout);
    if (fromAudioDetail.channelLayoutTag) setChannelLayoutTag(*fromAudioDetail.channelLayoutTag);
    if (fromAudioDetail.audioLanguageCode) setAudioLanguageCode(*fromAudioDetail.audioLanguageCode);
    if (fromAudioDetail.audioOutputIsDiscrete) setAudioOutputIsDiscrete(*fromAudioDetail.audioOutputIsDiscrete);
    if (fromAudioDetail.audioOutputChannelsMatchSource)
        setAudioOutputChannelsMatchSource(*fromAudioDetail.audioOutputChannelsMatchSource);
}

void Arguments::update(const TranscodeVideoDetail& fromVideoDetail) {
    if (fromVideoDetail.videoFormat) setVideoFormat(*fromVideoDetail.videoFormat);
    if (fromVideoDetail.videoDimensions) setVideoDimensions(*fromVideoDetail.videoDimensions);
    if (fromVideoDetail.aspectScaling) setAspectScaling(*fromVideoDetail.aspectScaling);
    if (fromVideoDetail.videoCropAnchor) setVideoCropAnchor(*fromVideoDetail.videoCropAnchor);
    if (fromVideoDetail.videoFrameRate) setVideoFrameRate(*fromVideoDetail.videoFrameRate);
    if (fromVideoDetail.videoBitRate) setVideoBitRate(*fromVideoDetail.videoBitRate);
    if (fromVideoDetail.videoBitDepth) setVideoBitDepth(*fromVideoDetail.videoBitDepth);
    if (fromVideoDetail.keyFrames) setKeyFrames(*fromVideoDetail.keyFrames);
    if (fromVideoDetail.videoProfile) setVideoProfile(*fromVideoDetail.videoProfile);
    if (fromVideoDetail.colorSpace) setColorSpace(*fromVideoDetail.colorSpace);
    if (fromVideoDetail.colorRange) setColorRange(*fromVideoDetail.colorRange);
    if (fromVideoDetail.preserveLogEncoding) setPreserveLogEncoding(*fromVideoDetail.preserveLogEncoding);
}

void Arguments::update(const TranscodeTimecodeDetail& fromTimecodeDetail) {
    const TranscodeTimecodeDetail& detail = fromTimecodeDetail;
    if (detail.timecode) setTimecode(*detail.timecode);
    if (detail.timecodeSource) setTimecodeSource(*detail.timecodeSource);  // after the text, which `custom` keeps
    if (detail.addTimecodeTrack) setAddTimecodeTrack(*detail.addTimecodeTrack);
    if (detail.addTimecodeBurn) setAddTimecodeBurn(*detail.addTimecodeBurn);
    if (detail.timecodeFrameRate) setTimecodeFrameRate(*detail.timecodeFrameRate);
    if (detail.timecodeDropFrameState) setTimecodeDropFrameState(*detail.timecodeDropFrameState);
    if (detail.timecodeBurnAnchor) setTimecodeBurnAnchor(*detail.timecodeBurnAnchor);
    if (detail.timecodeBurnFontSize) setTimecodeBurnFontSize(*detail.timecodeBurnFontSize);
    if (detail.timecodeBurnFontColor) setTimecodeBurnFontColor(*detail.timecodeBurnFontColor);
    if (detail.timecodeBurnBoxColor) setTimecodeBurnBoxColor(*detail.timecodeBurnBoxColor);
}

void Arguments::update(const TranscodeWatermarkImageDetail& fromWatermarkImageDetail) {
    if (fromWatermarkImageDetail.watermarkFilePath) setWatermarkFilePath(*fromWatermarkImageDetail.watermarkFilePath);
    if (fromWatermarkImageDetail.watermarkFileAnchor)
        setWatermarkFileAnchor(*fromWatermarkImageDetail.watermarkFileAnchor);
    if (fromWatermarkImageDetail.watermarkFileScale)
        setWatermarkFileScale(*fromWatermarkImageDetail.watermarkFileScale);
}

void Arguments::update(const TranscodeWatermarkTextDetail& fromWatermarkTextDetail) {
    if (fromWatermarkTextDetail.addWatermarkText) setAddWatermarkText(*fromWatermarkTextDetail.addWatermarkText);
    if (fromWatermarkTextDetail.watermarkText) setWatermarkText(*fromWatermarkTextDetail.watermarkText);
    if (fromWatermarkTextDetail.watermarkTextBurnFontSize)
        setWatermarkTextBurnFontSize(*fromWatermarkTextDetail.watermarkTextBurnFontSize);
    if (fromWatermarkTextDetail.watermarkTextAnchor)
        setWatermarkTextAnchor(*fromWatermarkTextDetail.watermarkTextAnchor);
    if (fromWatermarkTextDetail.watermarkTextFontColor)
        setWatermarkTextFontColor(*fromWatermarkTextDetail.watermarkTextFontColor);
    if (fromWatermarkTextDetail.watermarkTextBoxColor)
        setWatermarkTextBoxColor(*fromWatermarkTextDetail.watermarkTextBoxColor);
}

}  // namespace corvex::inline v0
