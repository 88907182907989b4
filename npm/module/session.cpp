#include "session.h"

#include "tools/ozmira/base/errors.h"
#include "tools/ozmira/base/text.h"
#include "tools/ozmira/base/tool_limits.h"
#include "tools/ozmira/commands/arguments.h"
#include "tools/ozmira/files/drawing_file.h"
#include "tools/ozmira/files/standard_output.h"
#include "tools/ozmira/picture/icon_renderer.h"
#include "tools/ozmira/picture/unpremultiply.h"
#include "tools/ozmira/report/drawing_check.h"
#include "tools/ozmira/report/finding_json.h"
#include "tools/ozmira/report/finding_text.h"
#include "tools/ozmira/report/summary_json.h"

#include <OzmiraConform/OzmiraConform.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace ozm::npm {
namespace {

/// The names of the options in messages.
constexpr const char *kWidth = "width", *kHeight = "height", *kScale = "scale", *kTimeoutName = "timeout",
                     *kFill = "fill", *kDecimals = "decimals";

/// Why a call has failed.
struct Failure {
    Status status;
    std::string message;
};

/// Does one step, whose errors mean `status`.
template <typename Step>
auto Try(Status status, Step step) {
    try {
        return step();
    } catch (const tool::FileError& error) {
        throw Failure{status, error.what()};
    }
}

void WriteFindings(const std::vector<conform::Finding>& findings) {
    tool::StandardOutput output;
    tool::JSONWriter json(output);
    json.Array([&] {
        for (const conform::Finding& finding : findings) tool::WriteJSON(json, finding);
    });
    output.Flush();
}

/// A length, or 0, which sets no limit.
double ReadLength(const char* option, double length) {
    return length == 0 ? 0 : tool::CheckLength(option, length);
}

} // namespace

char* Session::ReserveInput(size_t size) noexcept try {
    if (size > tool::kMaximumFileSize) return nullptr;
    m_input.resize(size);
    return m_input.data();
} catch (const std::bad_alloc&) {
    return nullptr;
}

template <typename Work>
Status Session::Run(Work work) noexcept {
    try {
        m_output.clear();
        work(std::exchange(m_input, {}));
        return kDone;
    } catch (const Failure& failure) {
        m_output = failure.message;
        return failure.status;
    } catch (const tool::UsageError& error) {
        m_output = error.what();
        return kBadOption;
    } catch (const std::bad_alloc&) {
        m_output.clear();
        return kOutOfMemory;
    }
}

Status Session::Check() noexcept {
    return Run([](const std::string& text) { WriteFindings(conform::Check(text)); });
}

Status Session::Conform(double decimals, bool outlineStrokes, bool lossy) noexcept {
    return Run([&](const std::string& text) {
        conform::Options options;
        if (!std::isnan(decimals))
            options.decimals = tool::ParseDecimals(kDecimals, tool::FormatNumber(decimals));
        options.outlineStrokes = outlineStrokes;
        options.lossy = lossy;
        conform::Result result = conform::Conform(text, options);
        WriteFindings(result.findings);
        if (result.isRefused) {
            const auto reason = std::find_if(result.findings.begin(), result.findings.end(),
                                             [](const conform::Finding& f) { return !f.isConvertible; });
            throw Failure{kRefused, reason == result.findings.end() ? "can't be rewritten"
                                                                    : tool::DescribeFinding("svg", *reason)};
        }
        m_output = std::move(result.text);
        m_isChanged = result.isChanged;
    });
}

Status Session::Info() noexcept {
    return Run([](std::string text) {
        const tool::Drawing drawing =
            Try(kUnreadable, [&] { return tool::ParseDrawingWithElements(std::move(text)); });
        tool::StandardOutput output;
        tool::JSONWriter json(output);
        tool::DocumentSummary summary = tool::Summarise(drawing);
        if (summary.problem.empty()) summary.problem = tool::SizeProblem(*drawing.document);
        json.Object([&] { tool::WriteMembers(json, *drawing.document, summary); });
        output.Flush();
    });
}

Status Session::Render(const Drawing& drawing) noexcept {
    return Run([&](std::string text) {
        const CGSize size = {ReadLength(kWidth, drawing.width), ReadLength(kHeight, drawing.height)};
        const double scale = tool::CheckScale(kScale, drawing.scale);
        const double timeout = tool::CheckTimeout(kTimeoutName, drawing.timeout);
        RenderingState state = kRenderingStateDefault;
        if (drawing.fillSize > 0) {
            const std::string fill = text.substr(text.size() - drawing.fillSize);
            text.resize(text.size() - drawing.fillSize);
            state.fillColor = tool::ParseColorArgument(kFill, fill);
        }

        const tool::Drawing parsed =
            Try(kUnreadable, [&] { return tool::ParseDrawingWithElements(std::move(text)); });
        Try(kTooComplex, [&] { return tool::CheckDrawing(*parsed.document); });
        tool::IconRenderer renderer(*parsed.document, state, false, timeout);
        Try(kBadSize, [&] { return renderer.CheckSize(size, scale); });
        const tool::Bitmap bitmap = Try(kTimeout, [&] { return renderer.Draw(size, scale); });
        const tool::PixelRows pixels = bitmap.Pixels();
        m_width = static_cast<uint32_t>(pixels.width);
        m_height = static_cast<uint32_t>(pixels.height);
        if (drawing.writesPNG) {
            m_encoder.Begin(pixels, scale);
            const auto file = m_encoder.Encode();
            m_output.assign(reinterpret_cast<const char*>(file.data()), file.size());
            return;
        }
        m_output.resize(4 * pixels.width * pixels.height);
        for (size_t y = 0; y < pixels.height; ++y) {
            auto* const row = reinterpret_cast<uint8_t*>(m_output.data()) + 4 * pixels.width * y;
            tool::UnpremultiplyToRGBA(pixels.Row(y), row, pixels.width);
        }
    });
}

} // namespace ozm::npm
