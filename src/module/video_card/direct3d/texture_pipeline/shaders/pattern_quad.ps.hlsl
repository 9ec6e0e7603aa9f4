// The texel of the pattern that belongs to each pixel, unchanged.

Texture2D<float4> pattern : register(t0);
SamplerState pattern_sampler : register(s0);

struct Corner
{
    float4 position : SV_POSITION;
    float2 textureCoordinate : TEXCOORD;
};

float4 main(Corner corner) : SV_TARGET
{
    return pattern.Sample(pattern_sampler, corner.textureCoordinate);
}
