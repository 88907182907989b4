#include "icons.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <numeric>
#include <string_view>

namespace bench {

namespace {

[[noreturn]] void Fail(const std::string& message) {
    std::cerr << message << '\n';
    std::exit(2);
}

std::string TakeIconsArgument(int& argc, char** argv) {
    constexpr std::string_view prefix = "--icons=";
    char** const end = argv + argc;
    char** const found = std::find_if(
        argv + 1, end, [&](const char* argument) { return std::string_view(argument).starts_with(prefix); });
    if (found == end) {
        Fail("usage: " + std::string(argv[0]) +
             " --icons=LIST [benchmark option...]\nbench/fetch-icons.sh writes build/icons/list.txt");
    }
    std::string value(*found + prefix.size());
    std::copy(found + 1, end, found);
    argv[--argc] = nullptr;
    return value;
}

} // namespace

std::vector<std::string> LoadIcons(int& argc, char** argv) {
    const std::string listName = TakeIconsArgument(argc, argv);
    std::ifstream list(listName);
    if (!list) Fail(listName + ": cannot be read; bench/fetch-icons.sh writes it");
    std::vector<std::string> texts;
    for (std::string name; std::getline(list, name);) {
        std::ifstream file(name, std::ios::binary);
        if (!file) Fail(listName + ": " + name + " cannot be read; run bench/fetch-icons.sh again");
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    if (texts.empty()) Fail(listName + ": names no file");
    return texts;
}

size_t TotalBytes(const std::vector<std::string>& texts) {
    return std::accumulate(texts.begin(), texts.end(), size_t{0},
                           [](size_t sum, const std::string& text) { return sum + text.size(); });
}

} // namespace bench
