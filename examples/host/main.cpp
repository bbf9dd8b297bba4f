// The host protocol end to end, without a window: two figures are created and
// registered, drawn into an offscreen context, selected and dragged with simulated mouse
// events, and their vertices read back as a host would send them to the camera.
#include "HostView.h"
#include "OffscreenGl.h"

#include <cstdio>

namespace {

template <class Figure>
HostView::ReadBack readerOf(Figure* figure)
{
    return [figure](tagTAVRIN_POINT* points, unsigned int* count) { return figure->GetPoints(points, count); };
}

void print(const char* what, const std::vector<tagTAVRIN_POINT>& vertices)
{
    std::printf("%s:", what);
    for (const tagTAVRIN_POINT& v : vertices) {
        std::printf(" (%.3f, %.3f)", v.x, v.y);
    }
    std::printf("\n");
}

}  // namespace

int main()
{
    const int width = 640;
    const int height = 360;
    Tavrin::offscreen::OffscreenGl gl;
    if (!gl.create(width, height)) {
        std::fprintf(stderr, "no offscreen context: %s\n", gl.error().c_str());
        return 1;
    }
    HostView view(width, height);

    // A shielded region, created by its class and handed to the view.
    Tavrin::ShieldRegion* region = Tavrin::ShieldRegion::NewInstance();
    if (region == nullptr) {
        return 1;
    }
    tagTAVRIN_POINT square[4] = {{0.2f, 0.2f}, {0.4f, 0.2f}, {0.4f, 0.5f}, {0.2f, 0.5f}};
    region->SetPoints(square, 4);
    char name[] = "Mask";
    region->SetLabelText(name, 4);
    view.add(region, readerOf(region));

    // A tripwire: a generic rule switched to its line.
    Tavrin::VcaRule* wire = Tavrin::VcaRule::NewInstance();
    if (wire == nullptr) {
        return 1;
    }
    tagTAVRIN_POINT ends[2] = {{0.6f, 0.3f}, {0.9f, 0.7f}};
    wire->SetPoints(ends, 2);
    wire->SetRuleType(TAVRIN_RULE_LINE);
    wire->SetArrowDirection(TAVRIN_ARROW_POSITIVE);
    view.add(wire, readerOf(wire));

    gl.clear(0.1f, 0.1f, 0.1f);
    view.paint();

    // Press on the region's first vertex and drag it 32 pixels right.
    view.press(128, 72);
    view.drag(160, 72);
    view.release();
    print("region after a vertex drag", view.selectedVertices());

    // Press inside the region and drag it whole 64 pixels down.
    view.press(200, 120);
    view.drag(200, 184);
    view.release();
    print("region after a whole drag", view.selectedVertices());

    // A drag that would carry the region out of the picture is ignored.
    view.press(200, 184);
    view.drag(200, 400);
    view.release();
    print("region after a refused drag", view.selectedVertices());

    gl.clear(0.1f, 0.1f, 0.1f);
    view.paint();
    view.removeSelected();
    return 0;
}
