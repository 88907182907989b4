#include "picture.h"
#include "tool_test.h"

#include <gmock/gmock.h>

using namespace ozm::test;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

/// A drawing of 4 x 2 points that a browser fills green. Ozmira leaves the arc out, so that it must be
/// conformed.
constexpr const char* kArc =
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="4" height="2" viewBox="0 0 8 4">)"
    R"(<path fill="#080" d="M-9 2A9 9 0 0 1 17 2A9 9 0 0 1-9 2"/></svg>)";
constexpr const char* kText =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 2"><text>t</text></svg>)";

class Catalogue : public ToolTest {
protected:
    Catalogue() {
        Write("icons/home.svg", kTwoHalves);
        Write("icons/home~dark.svg", kArc);
        Write("icons/navigation/back.svg", kArc);
    }

    Outcome Make(const std::string& options = "") const {
        return Run("ozmira catalogue icons -o Icons.xcassets " + options);
    }
    /// Checks the catalogue against the schema and against itself.
    std::string Soundness() const {
        const Outcome outcome =
            Run("python3 '" OZMIRA_CATALOGUE_CHECK "' '" OZMIRA_CATALOGUE_SCHEMA "' Icons.xcassets");
        return outcome.output + outcome.errors;
    }
    std::string Contents(const std::string& folder) const {
        return Read("Icons.xcassets/" + folder + "/Contents.json");
    }
    bool Exists(const std::string& name) const {
        return std::filesystem::exists(m_folder / "Icons.xcassets" / name);
    }
};

/// Another program's description.
constexpr const char* kForeign = R"({"info": {"author": "xcode", "version": 1}})";

} // namespace

TEST_F(Catalogue, HoldsPicturesAtThreeScales) {
    const Outcome outcome = Make();
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "2 image sets: 13 files written to Icons.xcassets\n");
    EXPECT_EQ(Soundness(), "sound\n");
    EXPECT_EQ(Contents("navigation/back.imageset"), R"({
  "images" : [
    {
      "filename" : "back.png",
      "idiom" : "universal",
      "scale" : "1x"
    },
    {
      "filename" : "back@2x.png",
      "idiom" : "universal",
      "scale" : "2x"
    },
    {
      "filename" : "back@3x.png",
      "idiom" : "universal",
      "scale" : "3x"
    }
  ],
  "info" : {
    "author" : "ozmira",
    "version" : 1
  }
}
)");
    EXPECT_THAT(Contents("home.imageset"), HasSubstr(R"(
    {
      "appearances" : [
        {
          "appearance" : "luminosity",
          "value" : "dark"
        }
      ],
      "filename" : "home~dark@2x.png",
      "idiom" : "universal",
      "scale" : "2x"
    },)"));
    EXPECT_EQ(Contents("navigation"), Contents("."));
    EXPECT_THAT(Contents("."), Not(HasSubstr("properties")));
    const std::pair<const char*, const char*> kSizes[] = {
        {"home.imageset/home.png", "4 x 2"},
        {"home.imageset/home@2x.png", "8 x 4"},
        {"home.imageset/home~dark@3x.png", "12 x 6"},
        {"navigation/back.imageset/back@3x.png", "12 x 6"},
    };
    for (const auto& [name, size] : kSizes)
        EXPECT_EQ(DecodePNG(Read("Icons.xcassets/" + std::string(name))).Size(), size) << name;
}

TEST_F(Catalogue, ConformsWhatNeedsIt) {
    Make();
    EXPECT_EQ(DecodePNG(Read("Icons.xcassets/navigation/back.imageset/back.png")).At(1, 1), 0x008800FFu);
    EXPECT_EQ(Run("ozmira render --conform icons/home~dark.svg -o x.png --scale 2"
                  " && cmp x.png Icons.xcassets/home.imageset/home~dark@2x.png")
                  .exitCode,
              0);
}

TEST_F(Catalogue, TakesOptions) {
    const struct {
        const char* options;
        const char* file; ///< Below the catalogue.
        const char* text; ///< A part of it, or of a picture's size.
    } kCases[] = {
        {"--template", "home.imageset/Contents.json", R"("template-rendering-intent" : "template")"},
        {"--height 48", "home.imageset/home@2x.png", "192 x 96"},
        {"--width 2 --height 48", "home.imageset/home~dark.png", "2 x 1"},
        {"--namespace", "navigation/Contents.json", R"("provides-namespace" : true)"},
        {"--vector", "home.imageset/Contents.json", R"("preserves-vector-representation" : true)"},
        {"--vector", "home.imageset/home.svg", kTwoHalves},
        {"--vector", "navigation/back.imageset/back.svg", R"(width="4" height="2" viewBox="0 0 8 4")"},
        {"--vector --height 48", "home.imageset/home.svg",
         R"(<svg width="96" height="48" viewBox="0 0 4 2">)"},
        {"--vector --width 3", "navigation/back.imageset/back.svg",
         R"(width="3" height="1.5" viewBox="0 0 8 4")"},
    };
    for (const auto& [options, file, text] : kCases) {
        SCOPED_TRACE(std::string(options) + " " + file);
        Run("rm -rf Icons.xcassets");
        EXPECT_EQ(Make(options).exitCode, 0);
        EXPECT_EQ(Soundness(), "sound\n");
        const std::string content = Read("Icons.xcassets/" + std::string(file));
        if (std::string(file).ends_with(".png")) {
            EXPECT_EQ(DecodePNG(content).Size(), text);
        } else {
            EXPECT_THAT(content, HasSubstr(text));
        }
    }
}

TEST_F(Catalogue, RefusesWhatCanBeNoAsset) {
    const struct {
        const char* file;
        const char* drawing;
        const char* message; ///< A regular expression.
    } kCases[] = {
        {"icons/a:b.svg", kTwoHalves,
         "a:b.svg: \"a:b\" can't be the name of an asset: it contains \":\"; rename"},
        {"icons/ a.svg", kTwoHalves, "blank; rename the file"},
        {"icons/a@2x.svg", kTwoHalves, "its end stands for a scale"},
        {"icons/a\x01.svg", kTwoHalves, "a\\\\x01\" can't .* control character"},
        {"icons/a\xFF.svg", kTwoHalves, "it is not UTF-8"},
        {"icons/x.y/a.svg", kTwoHalves, "the folder \"x.y\" can't be a group of assets: it contains a dot"},
        {"icons/navigation/Home.svg", kTwoHalves,
         "Home.svg: would be the asset \"Home\", as is icons/home.svg; .* --namespace"},
        {"icons/a~dark.svg", kTwoHalves, "dark appearance of \"a\", of which no set is made"},
        {"icons/a.svg", kText, "^ozmira: icons/a.svg:1:[0-9]+: warning: text .*\\[text\\]"},
        {"icons/a.svg", "", "icons/a.svg:1:1: error: "},
    };
    for (const auto& [file, drawing, message] : kCases) {
        SCOPED_TRACE(file);
        Write(file, drawing);
        const Outcome outcome = Make();
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(Lines(outcome.errors).size(), 1u) << outcome.errors;
        EXPECT_THAT(outcome.errors, ContainsRegex(message));
        EXPECT_THAT(outcome.output, HasSubstr("2 image sets: "));
        EXPECT_THAT(outcome.output, HasSubstr(", 1 file failed\n"));
        EXPECT_EQ(Soundness(), "sound\n");
        Run("rm -rf Icons.xcassets icons/x.y; find icons ! -name home.svg ! -name home~dark.svg ! -name "
            "back.svg "
            "-type f -delete");
    }
}

TEST_F(Catalogue, TellsEqualNamesApartByNamespaces) {
    Write("icons/navigation/home.svg", kTwoHalves);
    EXPECT_EQ(Make("--namespace").exitCode, 0);
    EXPECT_TRUE(Exists("navigation/home.imageset"));
    Write("icons/HOME.svg", kTwoHalves);
    EXPECT_THAT(Make("--namespace").errors, HasSubstr("icons/home.svg: would be the asset"));
}

TEST_F(Catalogue, WarnsOfBlankPictures) {
    Write("icons/home~dark.svg", "<svg viewBox=\"0 0 4 2\"><path fill=\"none\" d=\"M0 0h1v1z\"/></svg>");
    const Outcome outcome = Make();
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "icons/home~dark.svg: warning: the picture is blank, nothing is painted\n");
}

TEST_F(Catalogue, MakesNoPartOfASet) {
    const struct {
        const char *dark, *problem;
    } kCases[] = {
        {kText, "icons/home~dark.svg:1:"},
        // Too wide at the last scale only.
        {"<svg viewBox='0 0 12000 1'><path d='M0 0h9v1z'/></svg>",
         "icons/home~dark.svg: would make a picture of 36000 x 3 pixels"},
    };
    for (const auto& [dark, problem] : kCases) {
        Write("icons/home~dark.svg", dark);
        const Outcome outcome = Make();
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_THAT(outcome.errors, HasSubstr(problem));
        EXPECT_FALSE(Exists("home.imageset"));
        EXPECT_EQ(Soundness(), "sound\n");
    }
}

TEST_F(Catalogue, NamesDescriptionsThatCannotBeRead) {
    const struct {
        const char* folder; ///< Below the catalogue.
        const char* source; ///< The drawing that the line is about, if it is about one.
        const char* output;
    } kCases[] = {
        {"home.imageset",
         "icons/home.svg: ", "1 image set: 6 files written to Icons.xcassets, 1 file failed\n"},
        {"navigation", "", "2 image sets: 12 files written to Icons.xcassets, 1 file failed\n"},
        {"gone.imageset", "", "2 image sets: 13 files written to Icons.xcassets, 1 file failed\n"},
    };
    for (const auto& [folder, source, output] : kCases) {
        Run("rm -rf Icons.xcassets; mkdir -p Icons.xcassets/" + std::string(folder) + "/Contents.json");
        const Outcome outcome = Make("--prune");
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.errors, "ozmira: " + std::string(source) + "Icons.xcassets/" + folder +
                                      "/Contents.json: a folder; make it readable, or remove it\n");
        EXPECT_EQ(outcome.output, output);
    }
}

TEST_F(Catalogue, LeavesAloneWhatDidNotChange) {
    Make();
    const std::string age = "find Icons.xcassets -exec touch -d 2001-01-01 {} +;";
    const std::string list = "; find Icons.xcassets -type f -newermt 2002-01-01 | sort";
    EXPECT_EQ(Run(age + "ozmira catalogue icons -o Icons.xcassets/" + list).output,
              "2 image sets: no file written to Icons.xcassets, 13 already there\n");
    Write("icons/navigation/back.svg", kTwoHalves);
    EXPECT_EQ(Run("ozmira catalogue -q icons -o Icons.xcassets" + list).output,
              "Icons.xcassets/navigation/back.imageset/back.png\n"
              "Icons.xcassets/navigation/back.imageset/back@2x.png\n"
              "Icons.xcassets/navigation/back.imageset/back@3x.png\n");
    // A catalogue of drawings among the sources is no source.
    EXPECT_EQ(Run("ozmira catalogue icons -o icons/Icons.xcassets --vector -q;"
                  "ozmira catalogue icons -o icons/Icons.xcassets --vector")
                  .output,
              "2 image sets: no file written to icons/Icons.xcassets, 7 already there\n");
}

TEST_F(Catalogue, WritesNothingInADryRun) {
    EXPECT_EQ(Make("--dry-run").output, "2 image sets: 13 files would be written to Icons.xcassets\n");
    EXPECT_FALSE(Exists("."));
}

TEST_F(Catalogue, KeepsWhatOthersHaveMade) {
    Write("Icons.xcassets/Contents.json", kForeign);
    Write("Icons.xcassets/home.imageset/Contents.json", kForeign);
    Write("Icons.xcassets/old.imageset/Contents.json", kForeign);
    Write("Icons.xcassets/AppIcon.appiconset/Contents.json", kForeign);
    Write("Icons.xcassets/navigation/Contents.json", kForeign);
    const std::string before = Files();
    const Outcome outcome = Make("--prune --namespace");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.errors,
                HasSubstr("icons/home.svg: another program has made Icons.xcassets/home.imageset; "
                          "remove it, or rename the drawing\n"));
    EXPECT_THAT(outcome.errors,
                HasSubstr("navigation/Contents.json is another program's and makes the group no "
                          "namespace; turn on"));
    EXPECT_EQ(outcome.output, "1 image set: 4 files written to Icons.xcassets, 2 files failed\n");
    EXPECT_EQ(Run("rm -r Icons.xcassets/navigation/back.imageset").exitCode, 0);
    EXPECT_EQ(Files(), before);
    for (const char* folder : {".", "home.imageset", "old.imageset", "AppIcon.appiconset", "navigation"})
        EXPECT_EQ(Contents(folder), kForeign) << folder;
}

TEST_F(Catalogue, PrunesOnRequest) {
    Make();
    const std::string set = "navigation/back.imageset";
    const std::string named = "1 leftover without a source (Icons.xcassets/" + set + ")";
    Run("rm -r icons/navigation");
    const struct {
        const char* options;
        std::string last; ///< The last line of the output.
        bool remains;
    } kCases[] = {
        {"", named + "; --prune removes it", true},
        {"--prune --dry-run", named + " would be removed", true},
        {"--prune nowhere", named + " kept, because not every source could be listed", true},
        {"--prune", named + " removed", false},
    };
    Run("mkdir nowhere");
    for (const auto& [options, last, remains] : kCases) {
        SCOPED_TRACE(options);
        EXPECT_EQ(Lines(Make(options).output).back(), last);
        EXPECT_EQ(Exists(set), remains);
        EXPECT_EQ(Exists("navigation"), remains); // The group goes with its last set.
        EXPECT_EQ(Soundness(), "sound\n");
    }
    Write("Icons.xcassets/home.imageset/mine.txt", "");
    EXPECT_THAT(Make("--vector").output,
                ContainsRegex("6 leftovers .*home.png, .*home@2x.png, .*, \\.\\.\\.\\); --prune"));
    EXPECT_THAT(Make("--vector --prune").output, HasSubstr(" removed\n"));
    EXPECT_EQ(Files(), "Icons.xcassets/Contents.json Icons.xcassets/home.imageset/Contents.json "
                       "Icons.xcassets/home.imageset/mine.txt");
    Run("mv icons/home.svg icons/start.svg; rm icons/home~dark.svg");
    Make("--vector --prune");
    EXPECT_EQ(Files(), "Icons.xcassets/Contents.json Icons.xcassets/home.imageset/mine.txt "
                       "Icons.xcassets/start.imageset/Contents.json");
}
