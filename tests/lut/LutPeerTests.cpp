// The conventional application against another tool of the field, OpenColorIO, on the same files.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <OpenColorIO/OpenColorIO.h>

#include <tests/Places.h>
#include <tests/TemporaryDirectory.h>

#include "LutPixels.h"

namespace corvex::lutPeerTests {
namespace {

namespace ocio = OCIO_NAMESPACE;
using lutApplierTests::applied;

/// Red, green and blue one behind the other: greys and ramps through [-0.25, 1.25] and colours at random.
std::vector<float> colors() {
    std::vector<float> colors;
    for (int i = -250; i <= 1250; ++i) {
        const float at = static_cast<float>(i) / 1000;
        colors.insert(colors.end(), {at, at, at, at, 1 - at, at / 2});
    }
    const auto more = lutApplierTests::randomNumbers(3 * 3000, -0.3F, 2.2F);
    colors.insert(colors.end(), more.begin(), more.end());
    return colors;
}

std::vector<float> appliedByOpenColorIO(const std::filesystem::path& path, LutBlending blending) {
    const auto transform = ocio::FileTransform::Create();
    transform->setSrc(path.c_str());
    transform->setInterpolation(blending == LutBlending::trilinear ? ocio::INTERP_LINEAR : ocio::INTERP_TETRAHEDRAL);
    const auto processor = ocio::Config::CreateRaw()->getProcessor(transform)->getOptimizedCPUProcessor(
        ocio::BIT_DEPTH_F32, ocio::BIT_DEPTH_F32, ocio::OPTIMIZATION_LOSSLESS);
    std::vector<float> numbers = colors();
    ocio::PackedImageDesc image(numbers.data(), static_cast<long>(numbers.size() / 3), 1, 3);
    processor->apply(image);
    return numbers;
}

TEST(LutPeers, showTheSamePicture) {
    const test::TemporaryDirectory directory;
    // An ordinary cube of `n` points with entries at random between two numbers.
    const auto cube = [&](const char* name, int n, double low, double high, const char* header = "") {
        std::ofstream file(directory.path() / name);
        file << "TITLE \"made\"\nLUT_3D_SIZE " << n << '\n' << header << std::fixed;
        for (const auto& [r, g, b] : lutApplierTests::randomEntries(static_cast<std::size_t>(n * n * n), low, high)) {
            file << r << ' ' << g << ' ' << b << '\n';
        }
        return directory.path() / name;
    };
    const std::filesystem::path field = std::filesystem::path(test::dataDirectory) / "luts";
    const std::filesystem::path paths[] = {
        field / "baked_resolve33.cube",
        field / "filmluts_fuji_velvia_50.cube",
        field / "filmluts_ilford_hp_5_plus_400.cube",
        field / "colour_iridas_cube_Colour_Correct.cube",
        field / "colour_iridas_cube_RGB_1_0.5_0.25.cube",
        cube("two.cube", 2, 0, 1),
        cube("sixteen.cube", 16, 0, 1),
        cube("deep.cube", 33, -0.5, 1.7),
        cube("domain.cube", 9, 0, 1, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 1 1.5\n"),
        cube("narrow.cube", 9, 0, 1, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 2 1 0.5\n"),
        cube("offset.cube", 9, 0, 1, "DOMAIN_MIN -0.25 0.1 0\nDOMAIN_MAX 1 0.9 1.5\n"),
    };
    for (const auto& path : paths) {
        const auto file = ParsedLutFactory::read(path).file;
        ASSERT_TRUE(file) << path;
        for (const auto blending : {LutBlending::trilinear, LutBlending::tetrahedral}) {
            const auto expected = appliedByOpenColorIO(path, blending);
            for (const auto arithmetic : {LutArithmetic::exact, LutArithmetic::fast}) {
                const auto result = applied<float>(*file, {.blending = blending, .arithmetic = arithmetic}, colors());
                EXPECT_LT(lutApplierTests::largestDifference(result, expected), 1e-6F)
                    << path.filename() << ", tetrahedral " << (blending == LutBlending::tetrahedral);
            }
        }
    }
}

}  // namespace
}  // namespace corvex::lutPeerTests
