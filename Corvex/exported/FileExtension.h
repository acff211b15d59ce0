#pragma once

#include <cstdint>
#include <optional>

#include <Corvex/exported/OrvaneUTType.h>
#include <Corvex/platform/CaseTable.h>

namespace corvex::inline v0 {

/// File extensions that the system meets, in lower case and without the dot. Those that begin with a digit have the
/// digit's word last: `lut1d` is "1dlut", `lut3dl` "3dl", `mesh3d` "3dmesh".
enum class FileExtension : std::uint8_t {
    mov,
    mp4,
    m4v,
    mxf,
    avi,
    mkv,
    mts,
    r3d,
    braw,
    crm,
    nev,
    cine,
    ari,
    arx,
    dpx,
    dng,
    jpg,
    jpeg,
    png,
    tif,
    tiff,
    exr,
    heic,
    gif,
    bmp,
    wav,
    m4a,
    m4p,
    m4b,
    m4r,
    aif,
    aiff,
    caf,
    aac,
    mp3,
    txt,
    csv,
    xml,
    json,
    pdf,
    alut,
    cms,
    cube,
    dat,
    ilut,
    lut,
    mga,
    olut,
    lut1d,
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

/// The type of files with this extension.
[[nodiscard]] constexpr OrvaneUTType uniformType(FileExtension extension) noexcept { return caseOf(extension).type; }

/// The usual extension of files of this type: the first in the table that maps to it.
[[nodiscard]] constexpr std::optional<FileExtension> preferredExtension(OrvaneUTType type) noexcept {
    for (const auto& row : caseTable<FileExtension>) {
        if (row.type == type) return row.value;
    }
    return std::nullopt;
}

}  // namespace corvex::inline v0
