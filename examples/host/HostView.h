#ifndef TAVRIN_EXAMPLES_HOSTVIEW_H
#define TAVRIN_EXAMPLES_HOSTVIEW_H

// A framework-neutral host view: what a video client does with Tavrin. Its owner calls
// paint() after every video frame with the view's GL context current, and forwards mouse
// presses, drags, releases and hovering in view pixels. Copy it into a host and wire it
// to the toolkit's events (tools/demo wires it to Qt).

#include <Tavrin/Tavrin.h>

#include <functional>
#include <vector>

class HostView {
public:
    /// Reads a figure's vertices back; the concrete class knows how (GetPoints is
    /// declared by each analytics class, not by VcaObject).
    using ReadBack = std::function<bool(tagTAVRIN_POINT* points, unsigned int* count)>;

    /// What the view needs to know about one figure beyond VcaObject; all optional but
    /// `readBack`.
    struct Hooks {
        ReadBack readBack;
        /// Replaces CheckSelected in the press hit test, for kinds whose own answer does
        /// not suit a pointer (an LfCali counts as hit everywhere, deliberately).
        std::function<bool(tagTAVRIN_POINT& p)> hit;
        /// A second set of handles edited through their own calls, asked after the
        /// vertices: an AtmCali's line ends (CheckLinePointSelected,
        /// SetLineSelPointIndex, MoveLinePoint). `checkHandle` answers a 1-based index or
        /// 0, `selectHandle` makes it active, `moveHandle` drags it.
        std::function<unsigned int(tagTAVRIN_POINT& p)> checkHandle;
        std::function<void(unsigned int index)> selectHandle;
        std::function<void(tagTAVRIN_POINT& from, tagTAVRIN_POINT& to)> moveHandle;
    };

    HostView(int width, int height);
    /// Destroys the registry, which releases every figure still in it.
    ~HostView();
    HostView(const HostView&) = delete;
    HostView& operator=(const HostView&) = delete;

    /// Registers a figure created by its class's NewInstance() and takes over the
    /// creator's reference. Returns the registry slot, -1 if refused.
    int add(Tavrin::VcaObject* figure, ReadBack reader);
    int add(Tavrin::VcaObject* figure, Hooks hooks);
    /// Takes on a figure that something else has registered already and whose reference
    /// the registry alone holds (a scene reader's). Returns its slot, -1 if it is not in
    /// the registry.
    int track(Tavrin::VcaObject* figure, Hooks hooks);
    /// Puts `figure` (registered already, as for track) in the place of the figure in
    /// `slot`, in the same drawing order, and deletes the old one. Returns the new slot,
    /// -1 (and nothing changes) if `slot` is unknown or `figure` is not registered.
    int replace(int slot, Tavrin::VcaObject* figure, Hooks hooks);
    /// Moves the figure in `slot` to the top of the drawing order (drawn last, pressed
    /// first) or to the bottom. False for an unknown slot.
    bool restack(int slot, bool toTop);
    /// Deletes one figure: DelVcaObject drops the registry's reference, the only one.
    void remove(int slot);
    /// Deletes the selected figure.
    void removeSelected();
    /// Deletes every figure.
    void clear();
    /// Deletes registered figures that the view does not track (ones a scene reader made
    /// before it refused the rest of its file).
    void dropUntracked();

    void resize(int width, int height);
    int width() const { return m_width; }
    int height() const { return m_height; }
    void paint();

    void press(int x, int y);
    void drag(int x, int y);
    void release();
    /// Hovering without a button: the figure under the cursor, unless selected, shows
    /// status 2; every other unselected figure status 0.
    void hover(int x, int y);
    /// Selects `slot` (status 1) and sets every other figure to status 0; -1 selects none.
    void select(int slot);
    bool dragging() const { return m_drag != Drag::None; }

    /// The selected figure's vertices as last read back (what the host sends to the
    /// camera), or an empty list.
    std::vector<tagTAVRIN_POINT> selectedVertices() const;
    int selectedSlot() const { return m_selected; }
    /// The tracked slots in drawing order (the last one is on top).
    std::vector<int> figureSlots() const;
    /// The figure in `slot`, or null.
    Tavrin::VcaObject* object(int slot) const;
    /// Reads the figure's vertices back again (after a change made outside the mouse).
    void refresh(int slot);
    std::vector<tagTAVRIN_POINT> vertices(int slot) const;
    /// The view pixel (x, y) in normalised picture coordinates.
    tagTAVRIN_POINT normalised(int x, int y) const;

private:
    enum class Drag { None, Vertex, Handle, Whole };

    struct Figure {
        int slot;
        Hooks hooks;
        std::vector<tagTAVRIN_POINT> vertices;
    };

    int slotOf(Tavrin::VcaObject* figure) const;
    bool hits(Figure& figure, tagTAVRIN_POINT& cursor);
    void readBack(Figure& figure);
    Figure* find(int slot);
    const Figure* find(int slot) const;
    Figure* selectedFigure() { return find(m_selected); }

    int m_width;
    int m_height;
    std::vector<Figure> m_figures;
    int m_selected = -1;
    int m_hovered = -1;
    Drag m_drag = Drag::None;
    tagTAVRIN_POINT m_last{0.0f, 0.0f};
};

#endif  // TAVRIN_EXAMPLES_HOSTVIEW_H
