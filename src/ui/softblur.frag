#version 440

// A blur in one pass: samples on a spiral, each with the weight that a Gaussian gives to its distance.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform buf {
    mat4 qt_Matrix;
    float qt_Opacity;
    float radius; // points
    vec2 extent; // of the source, points
};
layout(binding = 1) uniform sampler2D source;

const int samples = 32;
const float goldenAngle = 2.39996323;

void main()
{
    vec4 sum = texture(source, qt_TexCoord0);
    float weights = 1.0;
    for (int i = 1; i < samples; ++i) {
        float distance = sqrt(float(i) / float(samples)); // of the radius
        float angle = float(i) * goldenAngle;
        vec2 offset = vec2(cos(angle), sin(angle)) * distance * radius * 1.5 / extent;
        float weight = exp(-2.0 * distance * distance);
        sum += texture(source, qt_TexCoord0 + offset) * weight;
        weights += weight;
    }
    fragColor = sum / weights * qt_Opacity;
}
