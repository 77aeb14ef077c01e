// ColorStrip: the colours of the drawing in a row. One is chosen; the tools that take a colour work on it. What the view
// hides is crossed out.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "app/window/swatches.h"
#include "app/window/windows/pane.h"

namespace app::window {

class ColorStrip : public Pane {
public:
    struct Events {
        std::function<void()> choose;
        std::function<void(POINT at)> menu;  // for the chosen one, on the screen
        std::function<void()> escape;
    };

    ColorStrip(const Screen& screen, Events events) : Pane(screen), m_events(std::move(events)) {}
    ~ColorStrip() override { DestroyWindow(); }

    bool create(CWnd& parent, UINT id);
    // `isOther`: of another drawing; else the colour stays chosen.
    void show(std::vector<Swatch> swatches, bool isOther);
    const std::vector<Swatch>& swatches() const { return m_swatches; }
    // Null without one.
    const Swatch* chosen() const;
    void choose(int index);
    int height() const { return scaled(44); }
    // In the client area; of one that is scrolled away it lies outside.
    RECT rectOf(int index) const;
    // Answers the tip's request for its text.
    bool giveTip(NMTTDISPINFOW& asked);
    HWND tips() const { return m_tips; }

protected:
    void paint(PaintBuffer& buffer) override;

    void OnLButtonDown(UINT flags, CPoint point);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    LRESULT onWheel(WPARAM wParam, LPARAM);
    LRESULT onContextMenu(WPARAM, LPARAM position);
    LRESULT onRightDown(WPARAM, LPARAM position);
    void OnMouseMove(UINT flags, CPoint point);
    DECLARE_MESSAGE_MAP()

private:
    int indexAt(POINT point) const;
    int shownCount() const;
    void scrollTo(int first);
    void paintSwatch(PaintBuffer& buffer, int index);

    const Events m_events;
    std::vector<Swatch> m_swatches;
    int m_chosen = -1;
    int m_first = 0;  // the leftmost that is shown
    HWND m_tips = nullptr;
    int m_tipIndex = -1;
    std::basic_string<WCHAR> m_tip;
};

}  // namespace app::window
