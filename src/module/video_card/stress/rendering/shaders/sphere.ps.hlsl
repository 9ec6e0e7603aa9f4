// A colour that depends on the pixel's place alone, found the hard way; nothing where the frame before has it already.

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

float cellValue(float2 cell)
{
    return frac(sin(dot(cell, float2(25.9796f, 156.466f))) * 43758.5f);
}

float smoothedValue(float2 cell)
{
    float corners = cellValue(cell + float2(-1, -1)) + cellValue(cell + float2(1, -1)) +
                    cellValue(cell + float2(-1, 1)) + cellValue(cell + float2(1, 1));
    float edges = cellValue(cell + float2(-1, 0)) + cellValue(cell + float2(1, 0)) +
                  cellValue(cell + float2(0, -1)) + cellValue(cell + float2(0, 1));
    return corners / 16 + edges / 8 + cellValue(cell) / 4;
}

float valueNoise(float2 place)
{
    float2 cell = floor(place);
    float2 blend = (1 - cos(3.14159265f * frac(place))) / 2;
    float upper = lerp(smoothedValue(cell), smoothedValue(cell + float2(1, 0)), blend.x);
    float lower = lerp(smoothedValue(cell + float2(0, 1)), smoothedValue(cell + float2(1, 1)), blend.x);
    return lerp(upper, lower, blend.y);
}

float fractalNoise(float2 place)
{
    float sum = 0;
    [loop] for (int octave = 1; octave <= 4; ++octave)
    {
        sum += valueNoise(place * (2.0f * octave)) * (0.1f * octave);
    }
    return sum;
}

float4 main(Corner corner) : SV_TARGET
{
    float2 pixel = corner.position.xy;
    float2 place = normalize(float2(fractalNoise(pixel), fractalNoise(pixel.yx + 17.0f)));
    float4 color = pattern_tex.Sample(pattern_sampler, place);
    float4 previous = previous_fb.Load(int3(pixel, 0));
    return length(previous - color) < 0.0001f ? float4(0, 0, 0, 0) : color;
}
