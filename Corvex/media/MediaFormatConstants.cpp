#include <Corvex/media/MediaFormatConstants.h>

#include <algorithm>
#include <array>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {
namespace {

/// Two makers are in the vocabulary and deliberately not in this list: Convergent Design and Nikon.
constexpr auto alphabeticalCorporations = [] {
    std::array list{
        &ORVMediaCorporationAdobe,   &ORVMediaCorporationApple,      &ORVMediaCorporationArri,
        &ORVMediaCorporationAvid,    &ORVMediaCorporationBlackMagic, &ORVMediaCorporationCanon,
        &ORVMediaCorporationCodex,   &ORVMediaCorporationDJI,        &ORVMediaCorporationInsta360,
        &ORVMediaCorporationGoPro,   &ORVMediaCorporationJVC,        &ORVMediaCorporationPanasonic,
        &ORVMediaCorporationPhantom, &ORVMediaCorporationRED,        &ORVMediaCorporationSony,
    };
    std::ranges::sort(list, {}, [](const ORVMediaCorporation* maker) { return maker->rawValue(); });
    return list;
}();

}  // namespace

MediaFormatConstants::MediaFormatConstants()
    : cachedContainerFileExtensionLookup_{
          {ORVMediaFileContainerQuickTimeMovie, {"mov"}},
          {ORVMediaFileContainerMXF, {"mxf"}},
          {ORVMediaFileContainerMP4, {"mp4", "m4v", ".m4a", ".m4p", ".m4b", ".m4r"}},
          {ORVMediaFileContainerAVI, {"avi"}},
          {ORVMediaFileContainerR3D, {"r3d"}},
          {ORVMediaFileContainerBRAW, {"braw"}},
          {ORVMediaFileContainerDPX, {"dpx"}},
          {ORVMediaFileContainerHDE, {"arx"}},
          {ORVMediaFileContainerCINE, {"cine"}},
      } {}

MediaFormatConstants::~MediaFormatConstants() = default;

const MediaFormatConstants& MediaFormatConstants::sharedInstance() {
    static const auto& shared = *new MediaFormatConstants;  // never destroyed: static objects may still ask at exit
    return shared;
}

void MediaFormatConstants::alphabeticalEnumerationOfCorporations(CorporationBlock block) {
    for (const ORVMediaCorporation* maker : alphabeticalCorporations) {
        if (block(*maker)) return;
    }
}

void MediaFormatConstants::enumerateValidFileExtensionsForMediaContainer(const ORVMediaFileContainer& container,
                                                                         ExtensionBlock block) {
    const auto& lookup = sharedInstance().cachedContainerFileExtensionLookup();
    const auto found = lookup.find(container);
    if (found == lookup.end()) return;
    for (const std::string_view extension : found->second) {
        if (block(extension)) return;
    }
}

void MediaFormatConstants::enumerateContainersForFileExtension(std::string_view extension, ContainerBlock block) {
    for (const ORVMediaFileContainer& container : ORVMediaFileContainer::allCases()) {
        enumerateValidFileExtensionsForMediaContainer(container, [&](std::string_view valid, bool& stop) {
            if (equalsIgnoringCase(valid, extension)) stop = block(container);
        });
    }
}

std::string MediaFormatConstants::description() const {
    std::string text;
    for (const auto& [container, extensions] : cachedContainerFileExtensionLookup_) {
        text += (text.empty() ? "" : "; ") + std::string(container.rawValue()) + ":";
        for (const std::string_view extension : extensions) text += " " + std::string(extension);
    }
    return text;
}

}  // namespace corvex::inline v0
