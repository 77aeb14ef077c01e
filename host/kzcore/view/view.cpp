#include "kzcore/view/view.h"

#include "kzcore/document/application.h"
#include "kzcore/document/document.h"

ADocView::ADocView(ADocument& document)
    : m_database(&document.getDatabase()),
      m_selection(&m_ownSelection),
      m_document(document),
      m_ownSelection(document),
      m_history(*this) {}

ADocView::~ADocView() {
    AApplication* application = AApplication::GetApplication();
    if (application && application->getActiveView() == this) application->setActiveView(nullptr);
    delete m_viewFilter;
}

ADocView* ADocView::GetActiveView() {
    const AApplication* application = AApplication::GetApplication();
    return application ? application->getActiveView() : nullptr;
}

void ADocView::setViewFilter(AViewFilter* filter) {
    if (filter == m_viewFilter) return;
    delete m_viewFilter;
    m_viewFilter = filter;
}

void ADocView::invalidate(const AFRect*) {
    ++m_redraws;
}
