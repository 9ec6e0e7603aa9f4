// The pixels of the first picture in which the second differs from it; zero everywhere else.

Texture2D<float4> rendered_images[2] : register(t0);
SamplerState image_sampler : register(s0);

cbuffer ResolutionBuffer : register(b0)
{
    float width;
    float height;
    float iTime;
    float padding;
};

float4 main(float4 position : SV_POSITION) : SV_TARGET
{
    float2 uv = position.xy / float2(width, height);
    float4 a = rendered_images[0].Sample(image_sampler, uv);
    float4 b = rendered_images[1].Sample(image_sampler, uv);
    return length(b - a) < 0.0001f ? float4(0, 0, 0, 0) : a;
}
