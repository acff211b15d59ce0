#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>

#include <filesystem>
#include <fstream>
#include <tuple>
#include <variant>

#include <gmock/gmock.h>

#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <tests/TemporaryDirectory.h>
#include <tests/cli/CliTexts.h>

namespace corvex::mediaAnalysisCLITests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Factory = MediaAnalysisCLIArgumentFactory;

TEST(MediaAnalysisVocabulary, locationsFollowEachOtherWithoutASeparator) {
    EXPECT_EQ(snapShotLocationsCLIValue(std::vector{1.0F}), "-snapshotLocation 1");
    EXPECT_EQ(snapShotLocationsCLIValue(std::vector{0.25F, 0.5F}), "-snapshotLocation 0.25-snapshotLocation 0.5");
    EXPECT_EQ(snapShotLocationsCLIValue({}), "");
    EXPECT_EQ(sanitizedFlag(MediaAnalysisImageCLIFlags::allowFinderImages, CLISanitizationOptions::lowercase),
              "-allowfinderimages");
}

TEST(MediaAnalysisCLIArgumentFactory, writesWhatIsGivenAndNothingElse) {
    EXPECT_EQ(Factory::buildBasicOptions(Words{"/a b.mov"}, "/work", "/r", {}, false).commandLineArguments(),
              pieces("-pathToAnalyze|/a b.mov|-resultsFilePath|/r|-workDirectory|/work"));
    EXPECT_EQ(
        Factory::buildBasicOptions(Words{"/a b.mov", "/c"}, "/w", "/r", "7", true).commandLineArguments(),
        pieces("-analysisId|7|-deepAnalysis||-pathToAnalyze|[/a b.mov\n/c|-resultsFilePath|/r|-workDirectory|/w"));
    EXPECT_THROW((void)Factory::buildBasicOptions(Words{"/a\nb", "/c"}, "/w", "/r", "", false), CLIWordError);

    const std::vector locations{0.25F, 1.0F};
    const auto narrow = Factory::buildImageOptions(locations, 320, std::nullopt, false, std::nullopt);
    EXPECT_EQ(narrow.commandLineArguments(), pieces("-maxImageWidth|320|-snapshotLocation|[0.25 1"));
    EXPECT_FALSE(narrow.limitsHeight());
    const auto boxed = Factory::buildImageOptions(locations, 320, 180.5F, 0.9F, true, "/look.cube");
    EXPECT_EQ(boxed.commandLineArguments(),
              pieces("-allowFinderImages||-compressionFactor|0.9|-imageHeight|180.5|-lutFile|/look.cube|-maxImageWidth"
                     "|320|-snapshotLocation|[0.25 1"));
    EXPECT_TRUE(boxed.limitsHeight());
    EXPECT_EQ(Factory::custodialOptions(42).commandLineArguments(), pieces("-parentPid|42"));
}

Words wordsOf(const auto&... stores) {
    Words words;
    const auto append = [&](const Words& more) { words.insert(words.end(), more.begin(), more.end()); };
    (append(stores.commandLineArguments()), ...);
    return words;
}

TEST(MediaAnalysisRequest, aChildReadsWhatItsParentBuilt) {
    for (const char* list : {"/a b.mov", "[x", "/a\nb", "/a|/b|c d", "[/a|b[", "[/a]|[|c"}) {
        const Words paths = pieces(list);
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
    const auto read = MediaAnalysisRequest::fromWords(
        pieces("-WORKDIRECTORY|w| -pathtoanalyze |A.mov| B |-workDirectory|W|-resultsFilePath|r|-snapshotLocation|0.5"
               "|[0 1|-maxImageWidth|9"));
    EXPECT_THAT(read.pathsToAnalyze, ElementsAre("A.mov", " B "));
    EXPECT_EQ(read.workDirectory, "W");
    EXPECT_THAT(read.images->snapshotLocations, ElementsAre(0.5F, 0.0F, 1.0F));
    EXPECT_EQ(read.images->imageHeight, std::nullopt);
}

TEST(MediaAnalysisRequest, saysWhatIsMissingOrHasNoPlace) {
    using Case = MediaAnalysisCLIErrorCase;
    using ImageCase = MediaAnalysisCLIImageErrorCase;
    using Offender = std::string;
    const std::string basic = "-pathToAnalyze|a|-workDirectory|w|-resultsFilePath|r|";
    const std::string image = basic + "-snapshotLocation|0|";
    const std::pair<std::string, std::variant<Case, ImageCase, Offender>> rows[] = {
        {"", Case::pathToAnalyzeNotSupplied},
        {"-pathToAnalyze|", Case::pathToAnalyzeNotSupplied},
        {"-pathToAnalyze|[\n", Case::pathToAnalyzeNotSupplied},
        {"-pathToAnalyze|a", Case::workDirectoryNotSupplied},
        {"-pathToAnalyze|a|-workDirectory|w|-resultsFilePath", Case::resultsFilePathNotSupplied},
        {basic + "-allowFinderImages", ImageCase::missingSnapshotLocations},
        {basic + "-snapshotLocation||-maxImageWidth|9", ImageCase::missingSnapshotLocations},
        {basic + "-snapshotLocation|0", ImageCase::missingMaxImageWidth},
        {"a.mov", Offender("a.mov")},
        {basic + "-deepAnalysis|yes", Offender("yes")},
        {basic + "-deep", Offender("-deep")},
        {basic + "-workDirectory|w|x", Offender("x")},
        {basic + "-snapshotLocation|[0.5 1.01|-maxImageWidth|9", Offender("1.01")},
        {basic + "-snapshotLocation|-0.5", Offender("-0.5")},
        {image + "-maxImageWidth|0.5", Offender("0.5")},
        {image + "-maxImageWidth|9|-imageHeight|65536", Offender("65536")},
        {image + "-maxImageWidth|9|-compressionFactor|nan", Offender("nan")},
        {basic + "-parentPid|0", Offender("0")},
        {basic + "-parentAppNumber|x", Offender("x")},
    };
    for (const auto& [words, expected] : rows) {
        SCOPED_TRACE(words);
        std::optional<std::remove_cvref_t<decltype(expected)>> found;
        int exitCode = 0;
        const auto note = [&](const auto& error, auto offender) {
            found = std::move(offender);
            exitCode = error.exitCode();
        };
        try {
            (void)MediaAnalysisRequest::fromWords(pieces(words));
        } catch (const MediaAnalysisCLIError& error) {
            note(error, error.which());
        } catch (const MediaAnalysisCLIImageError& error) {
            note(error, error.which());
        } catch (const CLIWordError& error) {
            note(error, Offender(error.word()));
        }
        EXPECT_EQ(found, expected);
        EXPECT_EQ(exitCode, 64);
    }
}

TEST(MediaAnalysisRequest, looksWhatExists) {
    using Case = MediaAnalysisCLIErrorCase;
    const test::TemporaryDirectory directory;
    const auto& folder = directory.path();
    const std::string file = folder / "file", none = folder / "none", link = folder / "link";
    std::ofstream(file) << "x";
    std::filesystem::create_symlink(none, link);
    const std::tuple<std::string, std::string, std::string, std::optional<Case>, int> rows[] = {
        {file, folder, none, std::nullopt, 0},
        {none, none, file, Case::pathToAnalyzeDoesNotExist, 66},
        {file, none, file, Case::workDirectoryDoesNotExist, 66},
        {file, file, file, Case::workDirectoryDoesNotExist, 66},
        {file, folder, file, Case::resultsFileAlreadyExists, 73},
        {file, folder, link, Case::resultsFileAlreadyExists, 73},
    };
    for (const auto& [path, workDirectory, results, expected, exitCode] : rows) {
        MediaAnalysisRequest request;
        request.pathsToAnalyze = {file, path};
        request.workDirectory = workDirectory;
        request.resultsFilePath = results;
        std::optional<MediaAnalysisCLIError> caught;
        try {
            request.requireFiles();
        } catch (const MediaAnalysisCLIError& error) {
            caught = error;
        }
        EXPECT_EQ(caught ? std::optional(caught->which()) : std::nullopt, expected);
        EXPECT_EQ(caught ? caught->exitCode() : 0, exitCode);
    }
    EXPECT_EQ(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r").exitCode(), 73);
    EXPECT_THAT(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r", "why").what(), HasSubstr("'/r': why"));
    EXPECT_FALSE(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r") ==
                 MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/s"));
}

}  // namespace
}  // namespace corvex::mediaAnalysisCLITests
