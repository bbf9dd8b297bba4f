// A host in miniature, built against an installed Tavrin: creates a figure through the
// registry and releases it. Exits 0 when the library behaves.
#include <Tavrin/Tavrin.h>

#include <cstdio>

int main()
{
    Tavrin::VcaObjectContainer* registry = Tavrin::VcaObjectContainer::Instance();
    if (registry == nullptr) {
        return 1;
    }
    tagTAVRIN_POINT centre{0.5f, 0.5f};
    Tavrin::Point point(&centre);
    tagTAVRIN_POINT from{0.5f, 0.5f};
    tagTAVRIN_POINT to{0.6f, 0.5f};
    if (!point.Move(from, to) || point.Rx() != 0.6f) {
        return 2;
    }
    if (registry->AddVcaObject(nullptr) != -1) {
        return 3;
    }
    Tavrin::TextRendering::SetEnabled(true);
    const bool textOn = Tavrin::TextRendering::IsEnabled();
    Tavrin::TextRendering::SetEnabled(false);
    if (!textOn || Tavrin::TextRendering::IsEnabled()) {
        return 5;
    }
    if (!Tavrin::VcaObjectContainer::Release()) {
        return 4;
    }
    std::puts("consumer ok");
    return 0;
}
