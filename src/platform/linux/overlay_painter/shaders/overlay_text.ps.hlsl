// The text's colour, as opaque as the text covers the pixel.

cbuffer Text : register(b0)
{
    float4 rectangle; // left, top, width and height in pixels
    float4 color;
    float2 target; // width and height in pixels
    float2 padding;
};

Texture2D<float> coverage : register(t0);

float4 main(float4 position : SV_POSITION) : SV_TARGET
{
    return float4(color.rgb, color.a * coverage.Load(int3(position.xy - rectangle.xy, 0)));
}
