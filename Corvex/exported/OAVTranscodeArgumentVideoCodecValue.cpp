#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>

#include <algorithm>
#include <utility>

#include <Corvex/exported/FileExtension.h>
#include <Corvex/platform/internal/ProcessWide.h>

namespace corvex::inline v0 {
namespace {

using Codec = OAVTranscodeArgumentVideoCodecValue;
using Codecs = std::vector<Codec>;

// Never destroyed, so that destructors of static objects may still ask.
ProcessWide<Codecs>& dnxFormats() {
    static auto& list = *new ProcessWide<Codecs>([] {
        return Codecs{OAVDnxhdCodec,   OAVDnxhrLBCodec,  OAVDnxhrSQCodec,
                      OAVDnxhrHQCodec, OAVDnxhrHQXCodec, OAVDnxhr444Codec};
    });
    return list;
}

ProcessWide<Codecs>& webFormats() {
    static auto& list = *new ProcessWide<Codecs>([] {
        return Codecs{OAVAvcH264Codec, OAVHevcCodec, OAVMotionJpegCodec};
    });
    return list;
}

ProcessWide<Codecs>& proResFormats() {
    static auto& list = *new ProcessWide<Codecs>([] {
        return Codecs{OAVProRes4444, OAVProRes4444XQ, OAVProRes422, OAVProRes422HQ, OAVProRes422LT, OAVProRes422Proxy};
    });
    return list;
}

constexpr std::array dnxExtensions{FileExtension::mov, FileExtension::mxf};
constexpr std::array mpeg4FamilyExtensions{FileExtension::mp4, FileExtension::m4v, FileExtension::mov};
constexpr std::array h264Extensions{FileExtension::mov, FileExtension::mp4, FileExtension::m4v};
constexpr std::array motionJpegExtensions{FileExtension::mov, FileExtension::avi};
constexpr std::array proResExtensions{FileExtension::mov};

bool contains(const Codecs& list, const Codec& codec) {
    return std::find(list.begin(), list.end(), codec) != list.end();
}

}  // namespace

Codecs Codec::allAvidDNxFormats() { return dnxFormats().get(); }
void Codec::setAllAvidDNxFormats(Codecs formats) { dnxFormats().set(std::move(formats)); }
Codecs Codec::allWebFormats() { return webFormats().get(); }
void Codec::setAllWebFormats(Codecs formats) { webFormats().set(std::move(formats)); }
Codecs Codec::allProResFormats() { return proResFormats().get(); }
void Codec::setAllProResFormats(Codecs formats) { proResFormats().set(std::move(formats)); }

std::span<const FileExtension> Codec::permittedExtensions() const {
    if (contains(allAvidDNxFormats(), *this)) return dnxExtensions;
    if (*this == OAVMpeg4Codec || *this == OAVHevcCodec) return mpeg4FamilyExtensions;
    if (*this == OAVAvcH264Codec) return h264Extensions;
    if (*this == OAVMotionJpegCodec) return motionJpegExtensions;
    if (contains(allProResFormats(), *this)) return proResExtensions;
    return {};
}

}  // namespace corvex::inline v0
