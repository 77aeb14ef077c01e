// ASelectByAttrSheet: the pages in which the user ticks what the selection is to hold, with a check box below
// them that keeps to what is selected already.
//
// OK makes the selection of the tool's candidates that meet the ticks: any tick of one kind (layer, object,
// fill, stroke, effect), all kinds that have a tick. Of an object and a container of it, both found, the
// container is selected. When nothing is found the selection ends empty and a message says so. Cancel changes
// nothing.
#pragma once

#include "kzutil/arrays.h"
#include "kzutil/object_list.h"
#include "platform/afx/button.h"
#include "platform/afx/ob_array.h"
#include "platform/afx/property_sheet.h"

class ASelectByAttrTool;
class ASelectPage;
class ASelection;
class Criteria;

class ASelectByAttrSheet : public CPropertySheet {
public:
    // The tool has to outlive the sheet.
    ASelectByAttrSheet(ASelectByAttrTool* tool, UINT captionId, CWnd* parent, UINT firstPage);
    ~ASelectByAttrSheet() override;

    // The sheet owns its pages.
    ASelectPage& createPage(const AString& category);
    // By its exact name; null when there is none.
    ASelectPage* findPage(const AString& category) const;
    int getSelectPageCount() const { return static_cast<int>(m_selectPages.GetSize()); }
    // Raises the framework's exception for an index outside.
    ASelectPage& getSelectPage(int index) const;
    // Puts the pages into the order of the categories, others behind them, sorts the entries of each, and
    // shows them as tabs.
    void addPages();

    int getSelectionOnly() const { return m_selectionOnly; }
    // Makes the selection that the ticks ask for.
    void apply();
    // Makes the selection that these conditions ask for; without a view nothing happens.
    void applyConditions(const AObArray& ticked);

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    int OnCreate(CREATESTRUCTW* creation);
    void OnSize(UINT type, int width, int height);
    void onSelectionOnly();
    DECLARE_MESSAGE_MAP()

private:
    void orderPages();
    void collectMatches(Criteria& criteria, AObList& result) const;
    void replaceSelection(ASelection& selection, const AObList& result);
    void emptySelection(ASelection& selection);

    CObArray m_selectPages;
    int m_selectionOnly = 0;
    CButton m_selectionOnlyButton;
    ASelectByAttrTool* m_tool;
};
