// A colour that depends on the pixel's place alone, found the hard way; nothing where the frame before has it already.

#include "fractal_noise.hlsli"

Texture2D<float4> previous_fb : register(t0);
Texture2D<float4> pattern_tex : register(t1);
SamplerState pattern_sampler : register(s0);

struct Corner
{
    float4 position : SV_POSITION;
    float3 normal : NORMAL;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;
};

float4 main(Corner corner) : SV_TARGET
{
    float2 pixel = corner.position.xy;
    float2 place = normalize(float2(fractalNoise(pixel), fractalNoise(pixel.yx + 17.0f)));
    float4 color = pattern_tex.Sample(pattern_sampler, place);
    float4 previous = previous_fb.Load(int3(pixel, 0));
    return length(previous - color) < 0.0001f ? float4(0, 0, 0, 0) : color;
}
