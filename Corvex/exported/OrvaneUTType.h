#pragma once

#include <cstdint>

#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// Uniform type identifiers of the containers, camera clips, images, audio and texts that the system meets. The raw
/// value is the identifier, a reversed domain name, by which desktops and job messages know a kind of file;
/// FileExtension.h maps extensions to it.
/// Types that no desktop registers have a name in their maker's domain, look-up tables one in the system's own. What
/// each format is stands beside the extension of the same name.
enum class OrvaneUTType : std::uint8_t {
    /// Containers of pictures and sound.
    quickTimeMovie,
    mpeg4Movie,
    /// Kept apart from mpeg4Movie, as desktops do: files called m4v.
    appleMPEG4Video,
    /// SMPTE ST 377-1.
    mxf,
    avi,
    /// RFC 9559.
    matroska,
    /// ISO/IEC 13818-1; the type of AVCHD's files, too.
    mpegTransportStream,
    /// Camera raw, by maker.
    redRaw,
    blackmagicRaw,
    canonRaw,
    nikonRaw,
    phantomCine,
    arriRaw,
    /// In the domain of Codex, who made the coding, not of ARRI.
    arriRawHde,
    /// Still images and image sequences. Digital picture exchange, SMPTE ST 268-1, comes first.
    dpx,
    /// The identifier is that of raw images in general.
    digitalNegative,
    jpeg,
    png,
    tiff,
    /// Half or single floating-point numbers, linear light.
    openEXR,
    heic,
    gif,
    bmp,
    /// Audio.
    waveformAudio,
    appleMPEG4Audio,
    /// With digital rights management: no worker opens these.
    protectedMPEG4Audio,
    /// No other type has audiobooks, protected or not.
    protectedMPEG4Audiobook,
    mpeg4Ringtone,
    aiffAudio,
    coreAudio,
    aacAudio,
    mp3,
    /// Texts and documents.
    plainText,
    commaSeparatedText,
    xml,
    json,
    pdf,
    /// Adobe's Cube text, of one or of three dimensions.
    cubeLut,
    /// The 3DL text of integer code values.
    lut3dl,
    /// Every other look-up table that the library reads.
    lookUpTable,
};

template <>
inline constexpr auto caseTable<OrvaneUTType> = std::to_array<Case<OrvaneUTType>>({
    // The case, the identifier, and what people call such a file.
    {OrvaneUTType::quickTimeMovie, "com.apple.quicktime-movie", "QuickTime movie"},
    {OrvaneUTType::mpeg4Movie, "public.mpeg-4", "MPEG-4 movie"},
    {OrvaneUTType::appleMPEG4Video, "com.apple.m4v-video", "Apple MPEG-4 video"},
    {OrvaneUTType::mxf, "org.smpte.mxf", "Material Exchange Format"},
    {OrvaneUTType::avi, "public.avi", "AVI movie"},
    {OrvaneUTType::matroska, "org.matroska.mkv", "Matroska movie"},
    {OrvaneUTType::mpegTransportStream, "public.mpeg-2-transport-stream", "MPEG-2 transport stream"},
    {OrvaneUTType::redRaw, "com.red.r3d", "REDCODE RAW clip"},
    {OrvaneUTType::blackmagicRaw, "com.blackmagicdesign.braw", "Blackmagic RAW clip"},
    {OrvaneUTType::canonRaw, "com.canon.crm", "Canon RAW clip"},
    {OrvaneUTType::nikonRaw, "com.nikon.nev", "Nikon RAW clip"},
    {OrvaneUTType::phantomCine, "com.visionresearch.cine", "Phantom Cine clip"},
    {OrvaneUTType::arriRaw, "com.arri.ari", "ARRIRAW frame"},
    {OrvaneUTType::arriRawHde, "com.codex.arx", "ARRIRAW HDE frame"},
    {OrvaneUTType::dpx, "org.smpte.dpx", "DPX image"},
    {OrvaneUTType::digitalNegative, "com.adobe.raw-image", "Digital Negative image"},
    {OrvaneUTType::jpeg, "public.jpeg", "JPEG image"},
    {OrvaneUTType::png, "public.png", "PNG image"},
    {OrvaneUTType::tiff, "public.tiff", "TIFF image"},
    {OrvaneUTType::openEXR, "com.ilm.openexr-image", "OpenEXR image"},
    {OrvaneUTType::heic, "public.heic", "HEIC image"},
    {OrvaneUTType::gif, "com.compuserve.gif", "GIF image"},
    {OrvaneUTType::bmp, "com.microsoft.bmp", "BMP image"},
    {OrvaneUTType::waveformAudio, "com.microsoft.waveform-audio", "Waveform audio"},
    {OrvaneUTType::appleMPEG4Audio, "com.apple.m4a-audio", "Apple MPEG-4 audio"},
    {OrvaneUTType::protectedMPEG4Audio, "com.apple.protected-mpeg-4-audio", "Protected MPEG-4 audio"},
    {OrvaneUTType::protectedMPEG4Audiobook, "com.apple.protected-mpeg-4-audio-b", "Protected MPEG-4 audiobook"},
    {OrvaneUTType::mpeg4Ringtone, "com.apple.mpeg-4-ringtone", "MPEG-4 ringtone"},
    {OrvaneUTType::aiffAudio, "public.aiff-audio", "AIFF audio"},
    {OrvaneUTType::coreAudio, "com.apple.coreaudio-format", "Core Audio"},
    {OrvaneUTType::aacAudio, "public.aac-audio", "AAC audio"},
    {OrvaneUTType::mp3, "public.mp3", "MP3 audio"},
    {OrvaneUTType::plainText, "public.plain-text", "Plain text"},
    {OrvaneUTType::commaSeparatedText, "public.comma-separated-values-text", "Comma-separated values"},
    {OrvaneUTType::xml, "public.xml", "XML text"},
    {OrvaneUTType::json, "public.json", "JSON text"},
    {OrvaneUTType::pdf, "com.adobe.pdf", "PDF document"},
    {OrvaneUTType::cubeLut, "org.corvex.cube-look-up-table", "Cube look-up table"},
    {OrvaneUTType::lut3dl, "org.corvex.3dl-look-up-table", "3DL look-up table"},
    {OrvaneUTType::lookUpTable, "org.corvex.look-up-table", "Look-up table"},
});
static_assert(isComplete<OrvaneUTType>(caseTable<OrvaneUTType>));

}  // namespace corvex::inline v0
