// ASelectPage: a page of the Select by Attributes sheet, one category of what an object can be.
#pragma once

#include "checkpage/check_page.h"

class ASelectByAttrSheet;

class ASelectPage : public ACheckPage {
public:
    ASelectPage(ASelectByAttrSheet* sheet, const AString& category);
    ~ASelectPage() override { DestroyWindow(); }

protected:
    BOOL OnInitDialog() override;
    // The active page alone applies the sheet, so that one OK applies it once.
    void OnOK() override;
    void onShowAll() override;

private:
    ASelectByAttrSheet& sheet() const;
};
