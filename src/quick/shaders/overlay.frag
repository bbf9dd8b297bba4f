#version 440
// The atlas's alpha (a glyph's ink, or the opaque block for shapes) times the colour.

layout(location = 0) in vec2 texCoord;
layout(location = 1) in vec4 premultiplied;

layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
};

layout(binding = 1) uniform sampler2D atlas;

void main()
{
    fragColor = premultiplied * texture(atlas, texCoord).a;
}
