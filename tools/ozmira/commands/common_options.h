// Options that several commands have, with the same names, texts and meaning.
#pragma once

#include <CoreGraphics/CoreGraphics.h>

#include <cstddef>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace ozm::tool {

/// How large drawings are drawn, and how long that may take, as written. The functions that read throw
/// `UsageError`.
struct DrawingOptions {
    std::optional<std::string> width, height, timeout;

    /// Adds --width and --height.
    void AddSize(CLI::App& command);
    /// Adds --timeout.
    void AddTimeout(CLI::App& command);

    /// In points; 0 means no limit.
    CGSize Size() const;
    /// Processor seconds for a picture; 0 means no limit.
    double Timeout() const;
};

/// How a batch is run, as written.
struct BatchOptions {
    std::optional<std::string> jobs;
    bool quiet = false;

    /// Adds -j and -q.
    void Add(CLI::App& command);

    /// The number of threads, one for each core if nothing was said. Throws `UsageError`.
    unsigned Jobs() const;
    /// Whether a batch of so many items shows a progress bar.
    bool ShowsProgress(size_t count) const;
};

} // namespace ozm::tool
