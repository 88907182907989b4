#include <Ozmira/SVG/ozmSVGParser.h>

#include "document_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

using namespace ozm;
using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

class Files : public testing::Test {
protected:
    Files() { fs::create_directory(m_folder); }
    ~Files() override { fs::remove_all(m_folder); }

    fs::path Write(const std::string& contents) const {
        const fs::path path = m_folder / "drawing.svg";
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }

    const fs::path m_folder = fs::temp_directory_path() / ("ozmira-files-" + std::to_string(getpid()));
};

/// The document as text, or "null".
std::string Parse(const fs::path& path) {
    const auto document = SVGParser().CreateDocumentWithContentsOfSVGFile(path.c_str());
    return document ? test::Text(*document) : "null";
}

const char* const kEmptyDocument = "0,0,0,0 0px 0px\n";

} // namespace

TEST_F(Files, AreRead) {
    EXPECT_EQ(Parse(Write("<svg viewBox='0 0 1 2'><path d='M1 2'/></svg>")),
              "0,0,1,2 1pt 2pt\nGroup 1\nPath M1,2\n");
    EXPECT_EQ(Parse(Write("<svg/>"s + '\0' + "<<<")), kEmptyDocument + "Group\n"s);
    EXPECT_EQ(Parse(Write("<svg>")), kEmptyDocument);
    EXPECT_EQ(Parse(Write("")), kEmptyDocument);
}

TEST_F(Files, MayBeLarge) {
    const size_t count = 200000;
    std::string contents = "<svg>";
    for (size_t i = 0; i < count; ++i) contents += "<path d='M1 2'/>";
    const auto document = SVGParser().CreateDocumentWithContentsOfSVGFile(Write(contents + "</svg>").c_str());
    ASSERT_TRUE(document);
    EXPECT_EQ(document->elements.size(), count + 1);
}

TEST_F(Files, ThatCannotBeOpenedReturnNull) {
    EXPECT_EQ(Parse(m_folder / "missing.svg"), "null");
    EXPECT_EQ(Parse(m_folder / "missing" / "drawing.svg"), "null");
    EXPECT_EQ(Parse(""), "null");
    EXPECT_EQ(SVGParser().CreateDocumentWithContentsOfSVGFile(nullptr), nullptr);
    const fs::path locked = Write("<svg/>");
    fs::permissions(locked, fs::perms::none);
    if (geteuid() != 0) {
        EXPECT_EQ(Parse(locked), "null");
    }
}

TEST_F(Files, ThatAreNotRegularReturnAnEmptyDocument) {
    EXPECT_EQ(Parse(m_folder), kEmptyDocument);
    EXPECT_EQ(Parse("/dev/null"), kEmptyDocument);
    EXPECT_EQ(Parse("/dev/zero"), kEmptyDocument);
    const fs::path pipe = m_folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(Parse(pipe), kEmptyDocument);
}

TEST_F(Files, ThatDoNotFitIntoMemoryReturnNull) {
#if defined(__SANITIZE_ADDRESS__) || defined(OZMIRA_SANITIZED)
    GTEST_SKIP() << "the sanitizers end the program when an allocation fails";
#endif
    const fs::path path = Write("<svg/>");
    if (truncate(path.c_str(), off_t{1} << 43) != 0) GTEST_SKIP() << "the file system has no sparse files";
    EXPECT_EQ(Parse(path), "null");
}
