#include <getopt.h>
#include <gtest/gtest.h>

#include <cstdlib>

#include "app/options.h"
#include "app/stage_timer.h"
#include "support/scratch.h"

namespace quenfold {
namespace {

using Names = std::vector<std::string>;

std::optional<Options> parsed(Names arguments) {
  arguments.insert(arguments.begin(), "quenfold");
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) {
    argv.push_back(argument.data());
  }
  argv.push_back(nullptr);
  optind = 0;  // glibc: scan from the start again
  verbose = false;
  return parseOptions(static_cast<int>(arguments.size()), argv.data());
}

TEST(ParseOptions, DefaultsToUnpackingNothing) {
  const auto options = parsed({});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->sourceDir, "");
  EXPECT_EQ(options->outputDir, "");
  EXPECT_EQ(options->function, "");
  EXPECT_EQ(options->inputFiles, Names{});
  EXPECT_EQ(options->outputFiles, Names{});
  EXPECT_FALSE(options->pack);
  EXPECT_FALSE(verbose);
}

TEST(ParseOptions, TakesEachOption) {
  const auto options =
      parsed({"-f", "matrices", "-s", "src", "-d", "dst", "-i", "a,,b", "-o", "x,", "-p", "-v"});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->function, "matrices");
  EXPECT_EQ(options->sourceDir, "src");
  EXPECT_EQ(options->outputDir, "dst");
  EXPECT_EQ(options->inputFiles, (Names{"a", "", "b"}));
  EXPECT_EQ(options->outputFiles, (Names{"x", ""}));
  EXPECT_TRUE(options->pack);
  EXPECT_TRUE(verbose);
  verbose = false;
}

TEST(ParseOptions, SetsNothingElse) {
  EXPECT_EQ(parsed({"-i", "a"})->outputFiles, Names{});
  EXPECT_FALSE(parsed({"-o", "a"})->pack);
  EXPECT_FALSE(verbose);
  EXPECT_FALSE(parsed({"-v"})->pack);
  EXPECT_EQ(parsed({"-d", "a"})->sourceDir, "");
  EXPECT_EQ(parsed({"-s", "a"})->function, "");
  verbose = false;
}

TEST(ParseOptions, LastOneWins) {
  const auto options = parsed({"-f", "a",  "-f",  "b",  "-s", "1",  "-s", "2",  "-d",  "3",  "-d",
                               "4",  "-i", "x,y", "-i", "z",  "-o", "u",  "-o", "v,w", "-p", "-u"});
  ASSERT_TRUE(options);
  EXPECT_EQ(options->function, "b");
  EXPECT_EQ(options->sourceDir, "2");
  EXPECT_EQ(options->outputDir, "4");
  EXPECT_EQ(options->inputFiles, Names{"z"});
  EXPECT_EQ(options->outputFiles, (Names{"v", "w"}));
  EXPECT_FALSE(options->pack);
  EXPECT_TRUE(parsed({"-u", "-p"})->pack);
}

TEST(ParseOptions, AnEmptyArgumentIsOneEmptyName) {
  EXPECT_EQ(parsed({"-i", ""})->inputFiles, Names{""});
  EXPECT_EQ(parsed({"-o", ""})->outputFiles, Names{""});
}

TEST(ParseOptions, AnArgumentMayLookLikeAnOption) {
  const auto options = parsed({"-i", "-p"});
  EXPECT_EQ(options->inputFiles, Names{"-p"});
  EXPECT_FALSE(options->pack);
}

TEST(ParseOptions, IgnoresOtherArgumentsAnywhere) {
  const auto options = parsed({"one", "-p", "two", "-f", "matrices", "three"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->pack);
  EXPECT_EQ(options->function, "matrices");
}

TEST(ParseOptions, HeedsNoEnvironmentVariable) {
  ASSERT_EQ(setenv("POSIXLY_CORRECT", "1", 1), 0);
  const auto options = parsed({"one", "-p"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->pack);
}

TEST(ParseOptions, TakesAttachedArguments) {
  const auto options = parsed({"-pfmatrices", "-ia.json"});
  ASSERT_TRUE(options);
  EXPECT_TRUE(options->pack);
  EXPECT_EQ(options->function, "matrices");
  EXPECT_EQ(options->inputFiles, Names{"a.json"});
}

TEST(ParseOptions, WantsTheUsageTextForHelpAndMistakes) {
  EXPECT_FALSE(parsed({"-p", "-h", "-v"}));
  EXPECT_FALSE(verbose) << "options after -h are not looked at";
  std::string diagnostic = test::standardErrorOf([] {
    EXPECT_FALSE(parsed({"-p", "-x", "-f", "matrices"}));
  });
  EXPECT_EQ(diagnostic, "quenfold: invalid option -- 'x'\n");
  diagnostic = test::standardErrorOf([] { EXPECT_FALSE(parsed({"-p", "-f"})); });
  EXPECT_EQ(diagnostic, "quenfold: option requires an argument -- 'f'\n");
}

TEST(PrintUsage, EndsItsExamplesInABlank) {
  const std::string usage = test::standardErrorOf(printUsage);
  EXPECT_EQ(usage.substr(0, 34), "Bitpack Velmora Logical IO files.\n");
  EXPECT_NE(usage.find("to active-db: \n"), std::string::npos);
  EXPECT_NE(usage.find("-d \"/active-db/\" \n"), std::string::npos);
  EXPECT_NE(usage.find("output to out-db/ (-d): \n"), std::string::npos);
  EXPECT_NE(usage.find("-d \"/out-db/\" \n"), std::string::npos);
  EXPECT_NE(usage.find("output to db_tmp/ (-d): \n"), std::string::npos);
  const std::string_view end = ",userPortLabels.json\" \n";
  ASSERT_GT(usage.size(), end.size());
  EXPECT_EQ(usage.substr(usage.size() - end.size()), end);
}

}  // namespace
}  // namespace quenfold
