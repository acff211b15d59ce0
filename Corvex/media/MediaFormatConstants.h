#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <Corvex/exported/ORVMediaCorporation.h>
#include <Corvex/exported/ORVMediaFileContainer.h>
#include <Corvex/platform/Export.h>
#include <Corvex/platform/Object.h>
#include <Corvex/platform/StoppableBlock.h>

namespace corvex::inline v0 {

/// Which file extensions the containers have, and the enumerations over that table. Immutable; any thread.
/// Four extensions of MP4 begin with "." and the others do not. A comparison that is not aware of dots, as
/// enumerateContainersForFileExtension(), never finds those four; lastPathComponentContainsExtension() does.
class CORVEX_EXPORT MediaFormatConstants final : public Object {
public:
    using Extensions = std::vector<std::string_view>;
    using ContainerBlock = StoppableBlock<const ORVMediaFileContainer&>;
    using CorporationBlock = StoppableBlock<const ORVMediaCorporation&>;
    using ExtensionBlock = StoppableBlock<std::string_view>;

    /// The one instance, made on first use.
    [[nodiscard]] static const MediaFormatConstants& sharedInstance();
    ~MediaFormatConstants() override;
    MediaFormatConstants(const MediaFormatConstants&) = delete;
    MediaFormatConstants& operator=(const MediaFormatConstants&) = delete;

    /// Extensions by container, in their fixed order, the usual one first. A container without extensions has no entry.
    /// The texts are literals.
    [[nodiscard]] const std::map<ORVMediaFileContainer, Extensions>& cachedContainerFileExtensionLookup()
        const noexcept {
        return cachedContainerFileExtensionLookup_;
    }

    /// Fifteen makers, ordered by their bytes, so that capitals come before lower case ("ARRI", "Adobe"). Convergent
    /// Design and Nikon are deliberately not among them.
    static void alphabeticalEnumerationOfCorporations(CorporationBlock block);

    /// As the table has them; nothing for a container that has no files of its own, such as an image sequence. The
    /// block may set its stop flag, here and below.
    static void enumerateValidFileExtensionsForMediaContainer(const ORVMediaFileContainer& container,
                                                              ExtensionBlock block);

    /// The containers that have the extension, without regard to case. Setting the stop flag ends the look at the
    /// current container only; the others still follow.
    static void enumerateContainersForFileExtension(std::string_view extension, ContainerBlock block);

    [[nodiscard]] std::string description() const override;
    /// By identity.
    [[nodiscard]] bool isEqual(const Object& other) const override { return this == &other; }
    [[nodiscard]] std::size_t hash() const override { return std::hash<const void*>{}(this); }

private:
    MediaFormatConstants();

    std::map<ORVMediaFileContainer, Extensions> cachedContainerFileExtensionLookup_;
};

}  // namespace corvex::inline v0
