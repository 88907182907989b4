#pragma once

#include <Ozmira/OZMCoreGraphicsRenderer.h>
#include <Ozmira/ozmElement.h>
#include <Ozmira/ozmLog.h>

#include <memory>

/// A parsed file with its renderer and its log.
struct OZMDocumentState {
    std::unique_ptr<ozm::Document> m_document;
    ozm::CoreGraphicsRenderer m_renderer; ///< Bound to `m_document`.
    std::unique_ptr<ozm::Log> m_log;
};
