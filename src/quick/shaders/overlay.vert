#version 440
// The overlay's triangles: item coordinates, atlas coordinates and a straight RGBA
// colour per vertex. The colour leaves premultiplied, as the scene graph blends.

layout(location = 0) in vec4 position;
layout(location = 1) in vec2 atlasCoord;
layout(location = 2) in vec4 colour;

layout(location = 0) out vec2 texCoord;
layout(location = 1) out vec4 premultiplied;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
};

out gl_PerVertex { vec4 gl_Position; };

void main()
{
    texCoord = atlasCoord;
    premultiplied = vec4(colour.rgb * colour.a, colour.a) * qt_Opacity;
    gl_Position = qt_Matrix * position;
}
