#include <tools/corvex/worker/QuickTimeLanguage.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace corvex::tool {
namespace {

/// Spelt as the writer spells them, three letters each.
constexpr std::string_view numbered =
    "eng fra ger ita dut sve spa dan por nor heb jpn ara fin gre ice mlt tur chi urd hin tha kor lit pol hun est lav "
    "smi per rus iri alb ron ces slk slv yid mac bul ukr bel uzb kaz aze arm geo mol kir tgk tuk mon pus kur kas snd "
    "tib nep san mar ben asm guj ori mal kan tam tel sin bur khm lao vie ind tgl may amh tir orm som swa kin run nya "
    "mlg epo wel baq cat lat que grn aym tat uig dzo jav und ";

/// Codes that it spells otherwise: the other one of two that ISO 639-2 has, or an abbreviation of its own.
constexpr std::pair<std::string_view, std::string_view> respelt[] = {
    {"deu", "ger"}, {"nld", "dut"}, {"ell", "gre"}, {"isl", "ice"}, {"zho", "chi"}, {"sqi", "alb"}, {"mkd", "mac"},
    {"hye", "arm"}, {"kat", "geo"}, {"fre", "fra"}, {"rum", "ron"}, {"cze", "ces"}, {"slo", "slk"}, {"fas", "per"},
    {"bod", "tib"}, {"mya", "bur"}, {"msa", "may"}, {"cym", "wel"}, {"eus", "baq"}, {"swe", "sve"}, {"gle", "iri"},
    {"hrv", "hr "}, {"srp", "sr "}, {"fao", "fo "}, {"pan", "pa "},
};

}  // namespace

std::optional<std::string_view> quickTimeLanguage(std::string_view iso639) noexcept {
    const auto* other =
        std::find_if(std::begin(respelt), std::end(respelt), [&](const auto& row) { return row.first == iso639; });
    if (other != std::end(respelt)) return other->second;
    const std::size_t found = numbered.find(iso639);
    const bool isWhole = iso639.size() == 3 && found != std::string_view::npos && found % 4 == 0;
    return isWhole ? std::optional(numbered.substr(found, 3)) : std::nullopt;
}

}  // namespace corvex::tool
