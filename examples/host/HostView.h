#ifndef TAVRIN_EXAMPLES_HOSTVIEW_H
#define TAVRIN_EXAMPLES_HOSTVIEW_H

// A framework-neutral host view: what a video client does with Tavrin. Its owner calls
// paint() after every video frame with the view's GL context current, and forwards mouse
// presses, drags and releases in view pixels. Copy it into a host and wire it to the
// toolkit's events (tavrin-demo wires it to Qt).

#include <Tavrin/Tavrin.h>

#include <functional>
#include <vector>

class HostView {
public:
    /// Reads a figure's vertices back; the concrete class knows how (GetPoints is
    /// declared by each analytics class, not by VcaObject).
    using ReadBack = std::function<bool(tagTAVRIN_POINT* points, unsigned int* count)>;

    HostView(int width, int height);
    ~HostView();

    /// Registers a figure created by its class's NewInstance() and takes over the
    /// creator's reference. Returns the registry slot, -1 if refused.
    int add(Tavrin::VcaObject* figure, ReadBack reader);
    /// Deletes the selected figure: DelVcaObject drops the registry's reference.
    void removeSelected();

    void resize(int width, int height);
    void paint();

    void press(int x, int y);
    void drag(int x, int y);
    void release();

    /// The selected figure's vertices as last read back (what the host sends to the
    /// camera), or an empty list.
    std::vector<tagTAVRIN_POINT> selectedVertices() const;
    int selectedSlot() const { return m_selected; }

private:
    struct Figure {
        int slot;
        ReadBack readBack;
        std::vector<tagTAVRIN_POINT> vertices;
    };

    tagTAVRIN_POINT normalised(int x, int y) const;
    Tavrin::VcaObject* object(int slot) const;
    void select(int slot);
    void readBack(Figure& figure);
    Figure* selectedFigure();

    int m_width;
    int m_height;
    std::vector<Figure> m_figures;
    int m_selected = -1;
    bool m_dragging = false;
    bool m_vertexDrag = false;
    tagTAVRIN_POINT m_last{0.0f, 0.0f};
};

#endif  // TAVRIN_EXAMPLES_HOSTVIEW_H
