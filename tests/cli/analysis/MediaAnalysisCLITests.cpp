#include <Corvex/cli/analysis/MediaAnalysisCLIArgumentFactory.h>

#include <filesystem>
#include <fstream>
#include <tuple>

#include <gmock/gmock.h>

#include <Corvex/cli/analysis/MediaAnalysisCLIError.h>
#include <Corvex/cli/analysis/MediaAnalysisCLIFlag.h>
#include <Corvex/cli/analysis/MediaAnalysisImageCLIFlags.h>
#include <Corvex/cli/analysis/MediaAnalysisRequest.h>
#include <tests/TemporaryDirectory.h>
#include <tests/Thrown.h>
#include <tests/cli/CliTexts.h>

namespace corvex::mediaAnalysisCLITests {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Factory = MediaAnalysisCLIArgumentFactory;

TEST(MediaAnalysisCLIArgumentFactory, writesWhatIsGivenAndNothingElse) {
    // Locations alone follow each other without a separator.
    EXPECT_EQ(snapShotLocationsCLIValue(std::vector{0.25F, 0.5F}), "-snapshotLocation 0.25-snapshotLocation 0.5");
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
    const std::string basic = "-pathToAnalyze|a|-workDirectory|w|-resultsFilePath|r|";
    const std::string image = basic + "-snapshotLocation|0|";
    const std::pair<std::string, const char*> rows[] = {
        {"-pathToAnalyze|", "-pathToAnalyze is missing"},
        {"-pathToAnalyze|[\n", "-pathToAnalyze is missing"},
        {"-pathToAnalyze|a", "-workDirectory is missing"},
        {"-pathToAnalyze|a|-workDirectory|w|-resultsFilePath", "-resultsFilePath is missing"},
        {basic + "-allowFinderImages", "-snapshotLocation is missing"},
        {basic + "-snapshotLocation|0", "-maxImageWidth is missing"},
        {"a.mov", "'a.mov': expected a flag"},
        {basic + "-deepAnalysis|yes", "-deepAnalysis 'yes': "},
        {basic + "-deep", "'-deep': unknown flag"},
        {basic + "-workDirectory|w|x", "-workDirectory 'x': "},
        {basic + "-snapshotLocation|[0.5 1.01|-maxImageWidth|9", "-snapshotLocation '1.01': "},
        {image + "-maxImageWidth|0.5", "-maxImageWidth '0.5': "},
        {image + "-maxImageWidth|9|-imageHeight|65536", "-imageHeight '65536': "},
        {image + "-maxImageWidth|9|-compressionFactor|nan", "-compressionFactor 'nan': "},
        {basic + "-parentPid|0", "-parentPid '0': "},
        {basic + "-parentAppNumber|x", "-parentAppNumber 'x': "},
    };
    for (const auto& [words, beginning] : rows) {
        const auto error =
            test::thrownBy<CLIExitCodeError>([&] { return MediaAnalysisRequest::fromWords(pieces(words)); });
        ASSERT_TRUE(error) << words;
        EXPECT_THAT(error->what(), StartsWith(beginning)) << words;
        EXPECT_EQ(error->exitCode(), 64) << words;
    }
}

TEST(MediaAnalysisRequest, looksWhatExists) {
    using Case = MediaAnalysisCLIErrorCase;
    const test::TemporaryDirectory directory;
    const std::string folder = directory.path(), file = folder + "/file", none = folder + "/none",
                      link = folder + "/link";
    std::ofstream(file) << "x";
    std::filesystem::create_symlink(none, link);
    const std::tuple<std::string, std::string, std::string, Case, int> rows[] = {
        {none, none, file, Case::pathToAnalyzeDoesNotExist, 66},
        {file, none, file, Case::workDirectoryDoesNotExist, 66},
        {file, file, file, Case::workDirectoryDoesNotExist, 66},
        {file, folder, file, Case::resultsFileAlreadyExists, 73},
        {file, folder, link, Case::resultsFileAlreadyExists, 73},
    };
    MediaAnalysisRequest request;
    for (const auto& [path, workDirectory, results, expected, exitCode] : rows) {
        request.pathsToAnalyze = {file, path};
        request.workDirectory = workDirectory;
        request.resultsFilePath = results;
        const auto error = test::thrownBy<MediaAnalysisCLIError>([&] { return request.requireFiles(), 0; });
        ASSERT_TRUE(error) << rawValue(expected);
        EXPECT_EQ(error->which(), expected);
        EXPECT_EQ(error->exitCode(), exitCode) << rawValue(expected);
    }
    request.resultsFilePath = none;
    EXPECT_NO_THROW(request.requireFiles());
    EXPECT_THAT(MediaAnalysisCLIError(Case::resultsFilePathNotCreated, "/r", "why").what(), HasSubstr("'/r': why"));
}

}  // namespace
}  // namespace corvex::mediaAnalysisCLITests
