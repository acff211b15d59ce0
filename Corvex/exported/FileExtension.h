#pragma once

#include <cstdint>
#include <optional>

#include <Corvex/exported/OrvaneUTType.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// File extensions that the system meets, in lower case and without the dot. Those that begin with a digit have the
/// digit's word last: `lut1d` is "1dlut", `lut3dl` "3dl", `mesh3d` "3dmesh".
/// Only the spelling of a name is told here, not what the file holds; PathEnumeration.h compares names without regard
/// to case.
enum class FileExtension : std::uint8_t {
    /// QuickTime File Format, from which ISO/IEC 14496-12 was made.
    mov,
    /// ISO/IEC 14496-14.
    mp4,
    /// An MPEG-4 file with video, as Apple's programs name it.
    m4v,
    /// SMPTE ST 377-1.
    mxf,
    /// A RIFF file of the form "AVI ".
    avi,
    /// RFC 9559.
    mkv,
    /// ISO/IEC 13818-1 (ITU-T H.222.0), as AVCHD camcorders record it: packets of 192 bytes, the first four a time
    /// stamp.
    mts,
    /// Camera raw of RED, wavelet-coded; long takes span several numbered files.
    r3d,
    /// Camera raw of Blackmagic Design, partly demosaiced in the camera.
    braw,
    /// Cinema RAW Light of Canon, in an ISO base media file.
    crm,
    /// N-RAW of Nikon.
    nev,
    /// High-speed takes of Vision Research's Phantom cameras.
    cine,
    /// One frame of uncompressed sensor data a file (SMPTE RDD 30).
    ari,
    /// The same, losslessly coded by Codex High Density Encoding.
    arx,
    /// SMPTE ST 268-1, one picture a file.
    dpx,
    /// A raw picture in a TIFF file; CinemaDNG recordings are numbered sequences of these.
    dng,
    /// ISO/IEC 10918-1 (ITU-T T.81).
    jpg,
    /// The long spelling of `jpg`; preferredExtension() never gives it.
    jpeg,
    /// ISO/IEC 15948.
    png,
    /// TIFF 6.0.
    tif,
    /// The long spelling of `tif`; preferredExtension() never gives it.
    tiff,
    /// Scene-linear pictures with 16-bit or 32-bit floating-point components.
    exr,
    /// An HEVC-coded picture in the image file format of ISO/IEC 23008-12.
    heic,
    gif,
    bmp,
    /// A RIFF file of the form "WAVE"; Broadcast Wave (EBU Tech 3285) uses it, too.
    wav,
    /// An MPEG-4 file with nothing but audio.
    m4a,
    /// The same, encrypted for one buyer.
    m4p,
    /// The same with chapters: a book.
    m4b,
    /// The same as a ringtone.
    m4r,
    /// Big-endian linear PCM in IFF chunks.
    aif,
    /// The long spelling of `aif`; preferredExtension() never gives it.
    aiff,
    /// Core Audio Format: any codec, and sizes of 64 bits, so that long takes fit.
    caf,
    /// A bare stream in ADTS frames (ISO/IEC 13818-7).
    aac,
    /// Layer III of ISO/IEC 11172-3.
    mp3,
    txt,
    /// RFC 4180.
    csv,
    xml,
    /// RFC 8259.
    json,
    /// ISO 32000.
    pdf,
    /// From here on the look-up tables that ParsedLutFactory reads; the entries, not the extension, say whether one has
    /// one dimension or three.
    alut,
    cms,
    /// The text form of Adobe's Cube LUT 1.0: keywords, then a triple a line, red fastest.
    cube,
    dat,
    ilut,
    lut,
    mga,
    olut,
    lut1d,
    /// A mesh of integer code values, blue fastest.
    lut3dl,
    mesh3d,
};

/// A row of the table: what every closed enumeration has, and the type of the files that bear the extension.
struct FileExtensionCase : Case<FileExtension> {
    OrvaneUTType type;
};

template <>
inline constexpr auto caseTable<FileExtension> = std::to_array<FileExtensionCase>({
    {{FileExtension::mov, "mov", "QuickTime movie"}, OrvaneUTType::quickTimeMovie},
    {{FileExtension::mp4, "mp4", "MPEG-4 movie"}, OrvaneUTType::mpeg4Movie},
    {{FileExtension::m4v, "m4v", "Apple MPEG-4 video"}, OrvaneUTType::appleMPEG4Video},
    {{FileExtension::mxf, "mxf", "Material Exchange Format"}, OrvaneUTType::mxf},
    {{FileExtension::avi, "avi", "AVI movie"}, OrvaneUTType::avi},
    {{FileExtension::mkv, "mkv", "Matroska movie"}, OrvaneUTType::matroska},
    {{FileExtension::mts, "mts", "AVCHD transport stream"}, OrvaneUTType::mpegTransportStream},
    {{FileExtension::r3d, "r3d", "REDCODE RAW clip"}, OrvaneUTType::redRaw},
    {{FileExtension::braw, "braw", "Blackmagic RAW clip"}, OrvaneUTType::blackmagicRaw},
    {{FileExtension::crm, "crm", "Canon RAW clip"}, OrvaneUTType::canonRaw},
    {{FileExtension::nev, "nev", "Nikon RAW clip"}, OrvaneUTType::nikonRaw},
    {{FileExtension::cine, "cine", "Phantom Cine clip"}, OrvaneUTType::phantomCine},
    {{FileExtension::ari, "ari", "ARRIRAW frame"}, OrvaneUTType::arriRaw},
    {{FileExtension::arx, "arx", "ARRIRAW HDE frame"}, OrvaneUTType::arriRawHde},
    {{FileExtension::dpx, "dpx", "DPX image"}, OrvaneUTType::dpx},
    {{FileExtension::dng, "dng", "Digital Negative image"}, OrvaneUTType::digitalNegative},
    {{FileExtension::jpg, "jpg", "JPEG image"}, OrvaneUTType::jpeg},
    {{FileExtension::jpeg, "jpeg", "JPEG image"}, OrvaneUTType::jpeg},
    {{FileExtension::png, "png", "PNG image"}, OrvaneUTType::png},
    {{FileExtension::tif, "tif", "TIFF image"}, OrvaneUTType::tiff},
    {{FileExtension::tiff, "tiff", "TIFF image"}, OrvaneUTType::tiff},
    {{FileExtension::exr, "exr", "OpenEXR image"}, OrvaneUTType::openEXR},
    {{FileExtension::heic, "heic", "HEIC image"}, OrvaneUTType::heic},
    {{FileExtension::gif, "gif", "GIF image"}, OrvaneUTType::gif},
    {{FileExtension::bmp, "bmp", "BMP image"}, OrvaneUTType::bmp},
    {{FileExtension::wav, "wav", "Waveform audio"}, OrvaneUTType::waveformAudio},
    {{FileExtension::m4a, "m4a", "Apple MPEG-4 audio"}, OrvaneUTType::appleMPEG4Audio},
    {{FileExtension::m4p, "m4p", "Protected MPEG-4 audio"}, OrvaneUTType::protectedMPEG4Audio},
    {{FileExtension::m4b, "m4b", "MPEG-4 audiobook"}, OrvaneUTType::protectedMPEG4Audiobook},
    {{FileExtension::m4r, "m4r", "MPEG-4 ringtone"}, OrvaneUTType::mpeg4Ringtone},
    {{FileExtension::aif, "aif", "AIFF audio"}, OrvaneUTType::aiffAudio},
    {{FileExtension::aiff, "aiff", "AIFF audio"}, OrvaneUTType::aiffAudio},
    {{FileExtension::caf, "caf", "Core Audio file"}, OrvaneUTType::coreAudio},
    {{FileExtension::aac, "aac", "AAC audio"}, OrvaneUTType::aacAudio},
    {{FileExtension::mp3, "mp3", "MP3 audio"}, OrvaneUTType::mp3},
    {{FileExtension::txt, "txt", "Plain text"}, OrvaneUTType::plainText},
    {{FileExtension::csv, "csv", "Comma-separated values"}, OrvaneUTType::commaSeparatedText},
    {{FileExtension::xml, "xml", "XML text"}, OrvaneUTType::xml},
    {{FileExtension::json, "json", "JSON text"}, OrvaneUTType::json},
    {{FileExtension::pdf, "pdf", "PDF document"}, OrvaneUTType::pdf},
    {{FileExtension::alut, "alut", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::cms, "cms", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::cube, "cube", "Cube look-up table"}, OrvaneUTType::cubeLut},
    {{FileExtension::dat, "dat", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::ilut, "ilut", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::lut, "lut", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::mga, "mga", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::olut, "olut", "Look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::lut1d, "1dlut", "One-dimensional look-up table"}, OrvaneUTType::lookUpTable},
    {{FileExtension::lut3dl, "3dl", "3DL look-up table"}, OrvaneUTType::lut3dl},
    {{FileExtension::mesh3d, "3dmesh", "Three-dimensional mesh look-up table"}, OrvaneUTType::lookUpTable},
});
static_assert(isComplete<FileExtension>(caseTable<FileExtension>));

/// The type of files with this extension; several extensions may share one.
[[nodiscard]] constexpr OrvaneUTType uniformType(FileExtension extension) noexcept { return caseOf(extension).type; }

/// The usual extension of files of this type: the first in the table that maps to it. None for a type without an
/// extension of its own. O(rows).
[[nodiscard]] constexpr std::optional<FileExtension> preferredExtension(OrvaneUTType type) noexcept {
    for (const auto& row : caseTable<FileExtension>) {
        if (row.type == type) return row.value;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0
