// Value noise in four octaves, for both stages of the sphere: a fixed function of the place.

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
