#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <variant>

#include <gmock/gmock.h>

#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>

namespace corvex::mediaAnalysisCLITests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;
using Factory = MediaAnalysisCLIArgumentFactory;

TEST(MediaAnalysisVocabulary, locationsFollowEachOtherWithoutASeparator) {
    EXPECT_EQ(snapShotLocationsCLIValue(std::vector{1.0F}), "-snapshotLocation 1");
    EXPECT_EQ(snapShotLocationsCLIValue(std::vector{0.25F, 0.5F}), "-snapshotLocation 0.25-snapshotLocation 0.5");
    EXPECT_EQ(snapShotLocationsCLIValue({}), "");
    EXPECT_EQ(sanitizedFlag(MediaAnalysisImageCLIFlags::allowFinderImages, CLISanitizationOptions::lowercase),
              "-allowfinderimages");
}

TEST(MediaAnalysisCLIArgumentFactory, writesWhatIsGivenAndNothingElse) {
    EXPECT_THAT(
        Factory::buildBasicOptions(Words{"/a b.mov"}, "/work", "/r.json", std::nullopt, false).commandLineArguments(),
        ElementsAre("-pathToAnalyze", "/a b.mov", "-resultsFilePath", "/r.json", "-workDirectory", "/work"));
    EXPECT_THAT(Factory::buildBasicOptions(Words{"/a b.mov", "/c"}, "/w", "/r", "7", true).commandLineArguments(),
                ElementsAre("-analysisId", "7", "-deepAnalysis", "", "-pathToAnalyze", "[/a b.mov\n/c",
                            "-resultsFilePath", "/r", "-workDirectory", "/w"));
    EXPECT_THROW((void)Factory::buildBasicOptions(Words{"/a\nb", "/c"}, "/w", "/r", "", false), CLIWordError);

    const std::vector locations{0.25F, 1.0F};
    const auto narrow = Factory::buildImageOptions(locations, 320, std::nullopt, false, std::nullopt);
    EXPECT_THAT(narrow.commandLineArguments(), ElementsAre("-maxImageWidth", "320", "-snapshotLocation", "[0.25 1"));
    EXPECT_FALSE(narrow.limitsHeight());
    const auto boxed = Factory::buildImageOptions(locations, 320, 180.5F, 0.9F, true, "/look.cube");
    EXPECT_THAT(boxed.commandLineArguments(),
                ElementsAre("-allowFinderImages", "", "-compressionFactor", "0.9", "-imageHeight", "180.5", "-lutFile",
                            "/look.cube", "-maxImageWidth", "320", "-snapshotLocation", "[0.25 1"));
    EXPECT_TRUE(boxed.limitsHeight());
    EXPECT_THAT(Factory::custodialOptions(42).commandLineArguments(), ElementsAre("-parentPid", "42"));
}

Words wordsOf(const auto&... stores) {
    Words words;
    const auto append = [&](const Words& more) { words.insert(words.end(), more.begin(), more.end()); };
    (append(stores.commandLineArguments()), ...);
    return words;
}

TEST(MediaAnalysisRequest, aChildReadsWhatItsParentBuilt) {
    const std::vector<Words> pathLists{
        {"/a b.mov"}, {"[x"}, {"/a\nb"}, {"/a", "/b", "c d"}, {"[/a", "b["}, {"[/a]", "[", "c"},
    };
    for (const Words& paths : pathLists) {
        const auto read = MediaAnalysisRequest::fromWords(
            wordsOf(Factory::buildBasicOptions(paths, "/w", "/r", "id 7", true),
                    Factory::buildImageOptions(std::vector{0.0F, 0.25F, 1.0F}, 320, 180, 0.5F, true, "/look.cube"),
                    Factory::custodialOptions(7)));
        EXPECT_EQ(read.pathsToAnalyze, paths);
        EXPECT_EQ(read.workDirectory + read.resultsFilePath, "/w/r");
        EXPECT_EQ(read.analysisId, "id 7");
        EXPECT_TRUE(read.deepAnalysis);
        EXPECT_EQ(read.parentPid, 7);
        ASSERT_TRUE(read.images);
        EXPECT_THAT(read.images->snapshotLocations, ElementsAre(0.0F, 0.25F, 1.0F));
        EXPECT_EQ(read.images->maxImageWidth, 320);
        EXPECT_EQ(read.images->imageHeight, 180);
        EXPECT_EQ(read.images->compressionFactor, 0.5F);
        EXPECT_TRUE(read.images->allowFinderImages);
        EXPECT_EQ(read.images->lutFile, "/look.cube");
    }
    const auto plain =
        MediaAnalysisRequest::fromWords(wordsOf(Factory::buildBasicOptions(Words{"a"}, "w", "r", {}, false)));
    EXPECT_FALSE(plain.images || plain.deepAnalysis || plain.analysisId || plain.parentPid != 0);
}

TEST(MediaAnalysisRequest, flagsCountInAnyCaseAndValuesAsGiven) {
    const auto read = MediaAnalysisRequest::fromWords(Words{"-WORKDIRECTORY", "w", " -pathtoanalyze ", "A.mov", " B ",
                                                            "-workDirectory", "W", "-resultsFilePath", "r",
                                                            "-snapshotLocation", "0.5", "[0 1", "-maxImageWidth", "9"});
    EXPECT_THAT(read.pathsToAnalyze, ElementsAre("A.mov", " B "));
    EXPECT_EQ(read.workDirectory, "W");
    EXPECT_THAT(read.images->snapshotLocations, ElementsAre(0.5F, 0.0F, 1.0F));
    EXPECT_EQ(read.images->imageHeight, std::nullopt);
}

TEST(MediaAnalysisRequest, saysWhatIsMissingOrHasNoPlace) {
    using Case = MediaAnalysisCLIErrorCase;
    using ImageCase = MediaAnalysisCLIImageErrorCase;
    struct Row {
        Words words;
        std::variant<Case, ImageCase, std::string> expected;  ///< A text: the word at fault.
    };
    const Words basic{"-pathToAnalyze", "a", "-workDirectory", "w", "-resultsFilePath", "r"};
    const auto with = [&](const Words& more) {
        Words words = basic;
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    const Row rows[] = {
        {{}, Case::pathToAnalyzeNotSupplied},
        {{"-pathToAnalyze", ""}, Case::pathToAnalyzeNotSupplied},
        {{"-pathToAnalyze", "[\n"}, Case::pathToAnalyzeNotSupplied},
        {{"-pathToAnalyze", "a"}, Case::workDirectoryNotSupplied},
        {{"-pathToAnalyze", "a", "-workDirectory", "w", "-resultsFilePath"}, Case::resultsFilePathNotSupplied},
        {with({"-allowFinderImages"}), ImageCase::missingSnapshotLocations},
        {with({"-snapshotLocation", "", "-maxImageWidth", "9"}), ImageCase::missingSnapshotLocations},
        {with({"-snapshotLocation", "0"}), ImageCase::missingMaxImageWidth},
        {{"a.mov"}, std::string("a.mov")},
        {with({"-deepAnalysis", "yes"}), std::string("yes")},
        {with({"-deep"}), std::string("-deep")},
        {with({"-workDirectory", "w", "x"}), std::string("x")},
        {with({"-snapshotLocation", "[0.5 1.01", "-maxImageWidth", "9"}), std::string("1.01")},
        {with({"-snapshotLocation", "-0.5"}), std::string("-0.5")},
        {with({"-snapshotLocation", "0", "-maxImageWidth", "0.5"}), std::string("0.5")},
        {with({"-snapshotLocation", "0", "-maxImageWidth", "9", "-imageHeight", "65536"}), std::string("65536")},
        {with({"-snapshotLocation", "0", "-maxImageWidth", "9", "-compressionFactor", "nan"}), std::string("nan")},
        {with({"-parentPid", "0"}), std::string("0")},
        {with({"-parentAppNumber", "x"}), std::string("x")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.words));
        try {
            (void)MediaAnalysisRequest::fromWords(row.words);
            ADD_FAILURE() << "not refused";
        } catch (const MediaAnalysisCLIError& error) {
            EXPECT_EQ(row.expected, (decltype(row.expected)(error.which())));
            EXPECT_EQ(error.exitCode(), 64);
        } catch (const MediaAnalysisCLIImageError& error) {
            EXPECT_EQ(row.expected, (decltype(row.expected)(error.which())));
            EXPECT_EQ(error.exitCode(), 64);
        } catch (const CLIWordError& error) {
            EXPECT_EQ(row.expected, (decltype(row.expected)(std::string(error.word()))));
            EXPECT_EQ(error.exitCode(), 64);
        }
    }
}

TEST(MediaAnalysisRequest, looksWhatExists) {
    using Case = MediaAnalysisCLIErrorCase;
    const auto folder = std::filesystem::path(::testing::TempDir()) / ("corvex-analysis-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const std::string file = folder / "file", none = folder / "none", link = folder / "link";
    std::ofstream(file) << "x";
    std::filesystem::create_symlink(none, link);
    struct Row {
        std::string path, workDirectory, results;
        std::optional<Case> expected;
        int exitCode;
    };
    const Row rows[] = {
        {file, folder, none, std::nullopt, 0},
        {none, none, file, Case::pathToAnalyzeDoesNotExist, 66},
        {file, none, file, Case::workDirectoryDoesNotExist, 66},
        {file, file, file, Case::workDirectoryDoesNotExist, 66},
        {file, folder, file, Case::resultsFileAlreadyExists, 73},
        {file, folder, link, Case::resultsFileAlreadyExists, 73},
    };
    for (const Row& row : rows) {
        MediaAnalysisRequest request;
        request.pathsToAnalyze = {file, row.path};
        request.workDirectory = row.workDirectory;
        request.resultsFilePath = row.results;
        std::optional<MediaAnalysisCLIError> caught;
        try {
            request.requireFiles();
        } catch (const MediaAnalysisCLIError& error) {
            caught = error;
        }
        EXPECT_EQ(caught ? std::optional(caught->which()) : std::nullopt, row.expected);
        EXPECT_EQ(caught ? caught->exitCode() : 0, row.exitCode);
    }
    std::filesystem::remove_all(folder);
    EXPECT_EQ(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r").exitCode(), 73);
    EXPECT_THAT(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r", "why").what(), HasSubstr("'/r': why"));
    EXPECT_FALSE(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r") ==
                 MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/s"));
}

}  // namespace
}  // namespace corvex::mediaAnalysisCLITests
