// What the module exports. A session is made once and used for every call: write the text where
// `ozmira_input` says, call, and read what `ozmira_output` points to until the next call.
#include "session.h"

#include "tools/ozmira/base/tool_limits.h"

#include <new>

using ozm::npm::Drawing;
using ozm::npm::Session;

extern "C" {

Session* ozmira_open() try { return new Session; } catch (const std::bad_alloc&) {
    return nullptr;
}

/// The most bytes of a drawing.
size_t ozmira_most_input() { return ozm::tool::kMaximumFileSize; }

char* ozmira_input(Session* session, size_t size) { return session->ReserveInput(size); }

int ozmira_check(Session* session) { return session->Check(); }

int ozmira_conform(Session* session, double decimals, int outlineStrokes, int lossy) {
    return session->Conform(decimals, outlineStrokes != 0, lossy != 0);
}

int ozmira_info(Session* session) { return session->Info(); }

int ozmira_render(Session* session, double width, double height, double scale, double timeout,
                  size_t fillSize, int writesPNG) {
    return session->Render({width, height, scale, timeout, fillSize, writesPNG != 0});
}

const char* ozmira_output(const Session* session) { return session->Output().data(); }
size_t ozmira_output_size(const Session* session) { return session->Output().size(); }
int ozmira_is_changed(const Session* session) { return session->IsChanged(); }
uint32_t ozmira_width(const Session* session) { return session->Width(); }
uint32_t ozmira_height(const Session* session) { return session->Height(); }
}
