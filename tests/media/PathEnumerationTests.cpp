#include <Corvex/media/PathEnumeration.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>

#include <tests/LoggedBy.h>
#include <tests/TemporaryDirectory.h>

namespace corvex::pathEnumerationTests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using ::testing::UnorderedElementsAre;
namespace fs = std::filesystem;

TEST(PathExtension, isFoundAtTheEndOrBeforeWhiteSpace) {
    constexpr std::tuple<const char*, const char*, bool> rows[] = {
        {"/card/clip.mov/", "mov", true},
        {"A001.mov copy 2", "MOV", true},
        {"a.mov\u00A0copy", "mov", true},
        {"x.m4a", ".m4a", true},
        {"x.targz", ".tar.gz", true},
        {".mov", "mov", true},
        {"\u00C4.M\u00D6V", "m\u00F6v", true},
        {"noextension", "", true},
        {"a.mov.txt", "mov", false},
        {"mov", "mov", false},
        {"a.movx", "mov", false},
        {"/card.mov/clip", "mov", false},
        {"a. mov", "mov", false},
        {"x.tar.gz", "tar.gz", false},
        {"", "mov", false},
    };
    for (const auto& [path, extension, isFound] : rows) {
        EXPECT_EQ(lastPathComponentContainsExtension(path, extension), isFound) << path << " with " << extension;
    }
}

/// A folder with a clip at its top, one a level below, and links that lead in a circle and nowhere.
class PathEnumeration : public testing::Test {
protected:
    PathEnumeration() {
        fs::create_directories(root_ / "CONTENTS/deep.mov");
        for (const char* file : {"a.MOV", "b.txt", "c.mxf 2", "CONTENTS/d.mxf", "CONTENTS/deep.mov/e.mov"}) {
            std::ofstream(root_ / file) << "x";
        }
        fs::create_directory_symlink(root_, root_ / "CONTENTS/circle");
        fs::create_symlink("nowhere", root_ / "CONTENTS/lost.mov");
    }

    [[nodiscard]] std::string name(const fs::path& path) const { return path.lexically_relative(root_).string(); }

    const test::TemporaryDirectory folder_;
    const fs::path& root_ = folder_.path();
    const std::vector<std::string> extensions_{"mxf", "mov"};
};

TEST_F(PathEnumeration, givesWhatMatchesWithTheExtensionThatDid) {
    std::vector<std::string> found;
    const auto add = [&](const fs::path& path, std::string_view extension) {
        found.push_back(name(path) + "=" + std::string(extension));
    };
    shallowEnumerationOfChildrenAtPath(root_, extensions_, add);
    EXPECT_THAT(found, UnorderedElementsAre("a.MOV=mov", "c.mxf 2=mxf"));
    found.clear();
    deepEnumerationOfChildrenAtPath(root_, extensions_, add);
    EXPECT_THAT(found, UnorderedElementsAre("a.MOV=mov", "c.mxf 2=mxf", "CONTENTS/d.mxf=mxf", "CONTENTS/deep.mov=mov",
                                            "CONTENTS/deep.mov/e.mov=mov", "CONTENTS/lost.mov=mov"));
}

TEST_F(PathEnumeration, endsWhereTheBlockStopsIt) {
    for (const auto enumerate : {shallowEnumerationOfChildrenAtPath, deepEnumerationOfChildrenAtPath}) {
        int calls = 0;
        enumerate(root_, extensions_, [&](const fs::path&, std::string_view, bool& stop) { stop = ++calls == 1; });
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(PathEnumeration, whatCannotBeListedIsLoggedOnlyByTheDeepForm) {
    const auto fail = [](const fs::path& path, std::string_view) { ADD_FAILURE() << path; };
    const auto lines = test::loggedBy([&] {
        shallowEnumerationOfChildrenAtPath(root_ / "none", extensions_, fail);
        deepEnumerationOfChildrenAtPath(root_ / "a.MOV", extensions_, fail);
    });
    EXPECT_THAT(lines, ElementsAre("CVX_FMPE_DECP-Failed to locate sub paths at " + (root_ / "a.MOV").string() +
                                   " with error Not a directory"));
}

TEST_F(PathEnumeration, whatVanishesMeanwhileIsSkippedAndTheWalkGoesOnUnlessItIsStopped) {
    for (const bool isStopped : {false, true}) {
        for (const char* folder : {"gone", "lost"}) fs::create_directory(root_ / folder);
        std::vector<std::string> visited, reasons;
        const auto visit = [&](const fs::directory_entry& entry) {
            visited.push_back(name(entry.path()));
            if (visited.back() == "gone" || visited.back() == "lost") fs::remove(entry.path());
        };
        const auto skip = [&](const fs::path&, std::error_code reason, bool& stop) {
            reasons.push_back(reason.message());
            stop = isStopped;
        };
        EXPECT_FALSE(walkFolder(root_, WalkDepth::subpaths, visit, skip));
        EXPECT_EQ(reasons, std::vector<std::string>(isStopped ? 1 : 2, "No such file or directory"));
        if (isStopped) continue;
        EXPECT_THAT(visited, IsSupersetOf({"a.MOV", "gone", "CONTENTS/deep.mov/e.mov", "CONTENTS/circle"}));
    }
}

}  // namespace
}  // namespace corvex::pathEnumerationTests
