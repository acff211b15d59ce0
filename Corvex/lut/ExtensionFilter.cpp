#include <Corvex/lut/ExtensionFilter.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include <Corvex/platform/Text.h>

namespace corvex::inline v0 {

bool ExtensionFilter::permitsExtension(const std::filesystem::path& path) const {
    std::string extension = path.extension().string();
    if (extension.starts_with('.')) extension.erase(0, 1);
    return isAscii(extension) && std::ranges::any_of(permittedExtensions_, [&](FileExtension permitted) {
               return equalsIgnoringCase(extension, rawValue(permitted));
           });
}

}  // namespace corvex::inline v0
