#pragma once

#include "base/lazy_output.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <sys/types.h>

namespace ozm::tool {

/// What an output holds. It replaces only a file that is empty or begins as one of its own kind does.
enum class OutputKind {
    Picture, ///< PNG
    Drawing, ///< SVG, compressed or not
    Page,    ///< HTML
    Data,    ///< JSON
    List,    ///< text that may begin in any way; it replaces any file but a drawing
};

/// What stands where an output is to go.
struct Destination {
    enum class State {
        Free,        ///< nothing
        Same,        ///< a file that holds what is to be written
        Replaceable, ///< another file, which may be replaced
        Device,      ///< a device or pipe, which is written to
    };

    State state = State::Free;
    std::string path; ///< With a link to a file resolved.
    mode_t mode = 0;  ///< The permissions of the file that stands there.
};

/// True for the names that drawings have: NAME.svg and NAME.svgz in any case. Nothing else may be written to
/// them.
bool IsDrawingName(std::string_view path);

/// True for NAME.svgz, the name of a compressed drawing.
bool IsPackedDrawingName(std::string_view path);

/// Decides what an output may replace: never an input, a drawing by name, a file of another kind or one that
/// is read-only. Constant, so that several threads may ask it.
class OutputGuard {
public:
    /// The inputs are files; those that do not exist, and "-", are ignored.
    explicit OutputGuard(std::span<const std::string> inputs);

    /// Examines the destination of an output. A file of at most `bound` bytes that stands there is read, and
    /// `isSame` compares it. Throws `FileError` with the reason if the destination must not be written.
    Destination Examine(const std::string& path, OutputKind kind, size_t bound,
                        const SameContent& isSame) const;

private:
    std::set<std::pair<dev_t, ino_t>> m_inputs;
};

} // namespace ozm::tool
