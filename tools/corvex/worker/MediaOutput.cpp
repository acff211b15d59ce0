#include <tools/corvex/worker/MediaOutput.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

extern "C" {
#include <libavutil/intreadwrite.h>
}

#include <tools/corvex/worker/QuickTimeLanguage.h>

namespace corvex::tool {
namespace {

const char* muxerName(const OAVTranscodeArgumentFileFormatValue& format) {
    if (format == OAVQuickTimeFileFormat) return "mov";
    return format == OAVMp4Format ? "mp4" : "wav";
}

/// Facts of the source's own container, or of tracks that are written by request only.
constexpr std::array<std::string_view, 5> sourceOnlyKeys{"major_brand", "minor_version", "compatible_brands", "encoder",
                                                         "timecode"};

}  // namespace

MediaOutput::MediaOutput(OutputFile& file, const OAVTranscodeArgumentFileFormatValue& format, bool indexInFront)
    : file_(file), indexInFront_(indexInFront) {
    const std::string url = "file:" + file.pathWhileWriting();  // the muxer opens it again to move the index
    AVFormatContext* context = nullptr;
    check(avformat_alloc_output_context2(&context, nullptr, muxerName(format), url.c_str()), what());
    context_.reset(context);
    check(avio_open(&context->pb, url.c_str(), AVIO_FLAG_WRITE), what());
}

MediaOutput::~MediaOutput() {
    if (context_) avio_closep(&context_->pb);
}

std::string MediaOutput::what() const {
    const std::string& way = file_.workDirectory().native();
    return "cannot write " + inQuotes(file_.target().native()) + (way.empty() ? "" : " by way of " + inQuotes(way));
}

bool MediaOutput::wantsGlobalHeaders() const noexcept { return (context_->oformat->flags & AVFMT_GLOBALHEADER) != 0; }

bool MediaOutput::carries(AVCodecID codec) const {
    // The writers of these name some codecs as theirs and refuse them when they write the header.
    const bool isMp4Alone = codec == AV_CODEC_ID_FLAC || codec == AV_CODEC_ID_OPUS;
    if (codec == AV_CODEC_ID_TRUEHD || (isMp4Alone && std::string_view(context_->oformat->name) == "mov")) return false;
    return avformat_query_codec(context_->oformat, codec, FF_COMPLIANCE_NORMAL) == 1;
}

void MediaOutput::requireCarries(AVCodecID codec) const {
    if (carries(codec)) return;
    throw JobError(what() + ": the format '" + context_->oformat->name + "' does not carry " + avcodec_get_name(codec));
}

int MediaOutput::addStream(const AVCodecContext& encoder, const char* tag) {
    AVStream* stream = checkAllocated(avformat_new_stream(context_.get(), nullptr));
    check(avcodec_parameters_from_context(stream->codecpar, &encoder), what());
    if (tag != nullptr) stream->codecpar->codec_tag = AV_RL32(tag);
    stream->time_base = encoder.time_base;
    stream->avg_frame_rate = encoder.framerate;
    stream->sample_aspect_ratio = encoder.sample_aspect_ratio;
    return stream->index;
}

int MediaOutput::addCopiedStream(const AVStream& source) {
    requireCarries(source.codecpar->codec_id);
    AVStream* stream = checkAllocated(avformat_new_stream(context_.get(), nullptr));
    check(avcodec_parameters_copy(stream->codecpar, source.codecpar), what());
    stream->codecpar->codec_tag = 0;  // the source's container may spell it otherwise
    stream->time_base = source.time_base;
    return stream->index;
}

void MediaOutput::copyMetadata(const AVDictionary* metadata) {
    const AVDictionaryEntry* entry = nullptr;
    while ((entry = av_dict_get(metadata, "", entry, AV_DICT_IGNORE_SUFFIX)) != nullptr) {
        if (std::find(sourceOnlyKeys.begin(), sourceOnlyKeys.end(), entry->key) != sourceOnlyKeys.end()) continue;
        av_dict_set(&context_->metadata, entry->key, entry->value, AV_DICT_DONT_OVERWRITE);
    }
}

void MediaOutput::setTimecode(int stream, const std::string& timecode) {
    av_dict_set(&context_->streams[stream]->metadata, "timecode", timecode.c_str(), 0);
    hasTimecode_ = true;
}

void MediaOutput::setLanguage(int stream, const std::string& language) {
    const std::string_view muxer = context_->oformat->name;
    const std::string spelling(muxer == "mov" ? quickTimeLanguage(language).value_or(language) : language);
    // A wave file has one track and states the language of the whole (INFO chunk, "ILNG").
    AVDictionary*& metadata = muxer == "wav" ? context_->metadata : context_->streams[stream]->metadata;
    av_dict_set(&metadata, "language", spelling.c_str(), 0);
}

void MediaOutput::start() {
    Options options;
    const std::string_view muxer = context_->oformat->name;
    // Beyond 4 GiB a wave file needs 64-bit sizes (EBU Tech 3306); without them its header would be wrong.
    if (muxer == "wav") options.set("rf64", "auto");
    if (hasTimecode_) options.set("write_tmcd", "1");  // MPEG-4 files have none by default
    if (indexInFront_ && muxer != "wav") options.set("movflags", "+faststart");
    check(avformat_write_header(context_.get(), options.address()), what());
    options.requireAllUsed("the format '" + std::string(muxer) + "'");
}

void MediaOutput::write(AVPacket& packet, int stream, AVRational timeBase) {
    av_packet_rescale_ts(&packet, timeBase, context_->streams[stream]->time_base);
    packet.stream_index = stream;
    packet.pos = -1;
    check(av_interleaved_write_frame(context_.get(), &packet), what());
}

void MediaOutput::finish() {
    check(av_write_trailer(context_.get()), what());
    check(context_->pb->error, what());
    check(avio_closep(&context_->pb), what());
}

}  // namespace corvex::tool
