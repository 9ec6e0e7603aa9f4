// The texel under each pixel, unchanged.

Texture2D<float4> colorMap_ : register(t0);
SamplerState colorSampler_ : register(s0);

struct Corner
{
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
};

float4 main(Corner corner) : SV_TARGET
{
    return colorMap_.Sample(colorSampler_, corner.textureCoordinate);
}
