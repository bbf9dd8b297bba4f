#ifndef TAVRIN_LABEL_H
#define TAVRIN_LABEL_H

#include <Tavrin/Rectangle.h>

namespace Tavrin {

/// A rectangle carrying a text of up to 127 bytes, anchored at its first corner. It
/// never draws its outline or fill.
class TAVRIN_API Label : public Rectangle {
public:
    Label();
    Label(tagTAVRIN_POINT* points, unsigned int count);
    Label(const Label& other) = default;
    ~Label() override;

    /// Stores the view size and positions the text at the first corner in the outline
    /// colour: raster position, one display list reserved and freed. Draws no outline
    /// and no fill, with or without vertices.
    void Draw(void* context, int width, int height, bool flag) override;

    /// Replaces the text; false, keeping the old one, for a null text or one longer than
    /// 127 bytes. An empty string clears it.
    bool SetText(char* text);

    void DrawByOpenGL(void* context);
    void DrawByGdi(void* context);

private:
    char m_text[128];
};

}  // namespace Tavrin

#endif  // TAVRIN_LABEL_H
