// ADocView: a view of a document, with its selection and its filter.
#pragma once

#include <memory>

#include "kzcore/view/history.h"
#include "kzcore/view/selection.h"
#include "kzcore/view/view_filter.h"

class ADevice;
class ADocument;
struct AAffine;

class ADocView {
public:
    explicit ADocView(ADocument& document);
    ~ADocView();
    ADocView(const ADocView&) = delete;
    ADocView& operator=(const ADocView&) = delete;

    // The view that tools work on; null when no drawing is open.
    static ADocView* GetActiveView();

    // Read by plug-ins directly. The filter belongs to the view and changes through setViewFilter alone.
    ADatabase* m_database;
    ASelection* m_selection;
    AViewFilter* m_viewFilter = nullptr;

    ADocument* getDocument() const { return &m_document; }
    AHistory& getHistory() { return m_history; }

    // Takes over the filter (null: none) and deletes the one before, unless it is the same object.
    void setViewFilter(AViewFilter* filter);

    // Draws the document as this view shows it: the master layers, then the layers, without what is hidden
    // and without the paint that the filter refuses; an object without paint of its own (a bitmap) is not
    // asked about. `toPixels`: from drawing coordinates to the pixels of the device's canvas.
    void draw(ADevice& device, const AAffine& toPixels) const;

    // Asks for the view to be drawn anew; null: all of it.
    void invalidate(const AFRect* area);
    // How often it was asked, for hosts that draw when it has changed.
    unsigned long long getRedrawCount() const { return m_redraws; }

private:
    ADocument& m_document;
    ASelection m_ownSelection;
    AHistory m_history;
    unsigned long long m_redraws = 0;
};
