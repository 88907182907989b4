#include <Ozmira/ozmLimits.h>
#include <Ozmira/SVG/ozmSVGParser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <pthread.h>
#include <random>
#include <string>

using namespace ozm;

namespace {

/// `depth` nested elements, including the root.
std::string Nested(size_t depth, const std::string& name = "g") {
    std::string text = "<svg>";
    for (size_t i = 1; i < depth; ++i) text += "<" + name + ">";
    for (size_t i = 1; i < depth; ++i) text += "</" + name + ">";
    return text + "</svg>";
}

size_t ElementCount(const std::string& text) {
    return SVGParser().CreateDocumentWithSVGData(text.c_str())->elements.size();
}

uint32_t Depth(const rapidxml::xml_node<char>* node) {
    uint32_t deepest = 0;
    for (const auto* child = node->first_node(); child; child = child->next_sibling()) {
        deepest = std::max(deepest, Depth(child) + 1);
    }
    return deepest;
}

/// The depth of the tree that RapidXML builds; -1 for text that it rejects.
int64_t DepthOfTree(std::string text) {
    rapidxml::xml_document<char> xml;
    try {
        xml.parse<rapidxml::parse_fastest>(text.data());
    } catch (const rapidxml::parse_error&) {
        return -1;
    }
    return Depth(&xml);
}

} // namespace

TEST(Nesting, IsAcceptedUpToTheLimit) {
    EXPECT_EQ(ElementCount(Nested(kMaximumNestingDepth)), kMaximumNestingDepth);
    EXPECT_EQ(ElementCount(Nested(kMaximumNestingDepth + 1)), 0u);
    EXPECT_EQ(ElementCount(Nested(kMaximumNestingDepth, "x")), 1u);
    EXPECT_EQ(ElementCount(Nested(kMaximumNestingDepth + 1, "x")), 0u);
    EXPECT_EQ(ElementCount(Nested(1000000)), 0u);
    EXPECT_EQ(ElementCount("<svg>" + std::string(1000000, '<')), 0u);
    // The number of elements does not count.
    std::string siblings = "<svg>";
    for (int i = 0; i < 3000; ++i) siblings += "<g><g/></g>";
    EXPECT_EQ(ElementCount(siblings + "</svg>"), 6001u);
}

TEST(Nesting, IsTheDepthOfTheXMLTree) {
    const char* const pieces[] = {"<a>",
                                  "<b >",
                                  "</a>",
                                  "</>",
                                  "<c/>",
                                  "<d e='>' f=\"</a>\"/>",
                                  "<e x = 'y' >",
                                  "x",
                                  "<!-- <a> -->",
                                  "<!-->",
                                  "-->",
                                  "<![CDATA[<a>]]>",
                                  "]]>",
                                  "<?p <a>?>",
                                  "<?>",
                                  "?>",
                                  "<!DOCTYPE a [<a>[]]>",
                                  "<!X <a>",
                                  "<!DOCTYPE>",
                                  " ",
                                  "<a",
                                  ">",
                                  "/",
                                  "='",
                                  "\"",
                                  "&"};
    std::mt19937 random(3);
    int accepted = 0;
    for (int i = 0; i < 30000; ++i) {
        std::string text = i % 2 ? "<s>" : "";
        for (size_t count = random() % 12; count > 0; --count) text += pieces[random() % std::size(pieces)];
        if (i % 2) text += "</s>";
        const int64_t depth = DepthOfTree(text);
        if (depth < 0) continue;
        ++accepted;
        for (uint32_t limit = 0; limit < 8; ++limit)
            EXPECT_EQ(NestsDeeperThan(text.c_str(), limit), depth > limit) << text;
    }
    EXPECT_GT(accepted, 3000);
}

TEST(Nesting, FitsOnTheStackOfASecondaryThread) {
#if defined(NDEBUG) && !defined(OZMIRA_SANITIZED)
    constexpr size_t kStackSize = 512 * 1024;
#else
    constexpr size_t kStackSize = 8 * 1024 * 1024; // Without optimisation, frames are several times as large.
#endif
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    const auto parse = [](void* count) -> void* {
        *static_cast<size_t*>(count) = ElementCount(Nested(kMaximumNestingDepth));
        return nullptr;
    };
    size_t count = 0;
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, parse, &count), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(count, kMaximumNestingDepth);
}
