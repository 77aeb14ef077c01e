// LayerList: the layers, topmost first, each with an eye and a lock to click on.
#pragma once

#include <functional>
#include <vector>

#include "app/window/swatches.h"
#include "app/window/windows/pane.h"

namespace app::window {

class LayerList : public Pane {
public:
    struct Events {
        // `change`: show, hide, lock or unlock.
        std::function<void(const std::string& name, const char* change)> change;
        std::function<void()> escape;
    };

    LayerList(const Screen& screen, Events events) : Pane(screen), m_events(std::move(events)) {}
    ~LayerList() override { DestroyWindow(); }

    void show(std::vector<LayerRow> rows);
    const std::vector<LayerRow>& rows() const { return m_rows; }
    // In the client area.
    POINT eyeOf(int row) const;
    POINT lockOf(int row) const;

protected:
    void paint(PaintBuffer& buffer) override;

    void OnLButtonDown(UINT flags, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    LRESULT onWheel(WPARAM wParam, LPARAM);
    DECLARE_MESSAGE_MAP()

private:
    RECT rectOf(int row) const;
    int shownCount() const;
    void choose(int row);
    void scrollTo(int first);
    void turnEye(int row);
    void turnLock(int row);
    void paintRow(PaintBuffer& buffer, int row);

    const Events m_events;
    std::vector<LayerRow> m_rows;
    int m_chosen = 0;
    int m_first = 0;  // the uppermost that is shown
};

}  // namespace app::window
