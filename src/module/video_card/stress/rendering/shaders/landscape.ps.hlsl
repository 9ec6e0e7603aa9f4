// A lake among mountains at dusk, walked around once in some twelve seconds: a fixed function of pixel and time, and
// heavy on purpose.

cbuffer ResolutionBuffer : register(b0)
{
    float width;
    float height;
    float iTime;
    float padding;
};

static const float farthest = 34.0f;
static const float highest = 4.6f; // no ground rises above it
static const float3 fogColor = float3(0.01f, 0.1f, 0.2f);
static const float3 sunDirection = float3(0.7804f, 0.1951f, -0.5940f);
static const float3 sunColor = float3(3.4f, 1.50f, 0.58f);
static const float3 skyColor = float3(0.10f, 0.20f, 0.36f);

float hash(float2 p)
{
    float3 q = frac(float3(p.xyx) * float3(0.1031f, 0.1030f, 0.0973f));
    q += dot(q, q.yzx + 33.33f);
    return frac((q.x + q.y) * q.z);
}

/// Value in x, slope in y and z.
float3 noise(float2 p)
{
    float2 cell = floor(p);
    float2 f = p - cell;
    float2 blend = f * f * f * (f * (f * 6.0f - 15.0f) + 10.0f);
    float2 slope = 30.0f * f * f * (f * (f - 2.0f) + 1.0f);
    float a = hash(cell);
    float b = hash(cell + float2(1, 0));
    float c = hash(cell + float2(0, 1));
    float d = hash(cell + float2(1, 1));
    float mixed = a - b - c + d;
    return float3(a + (b - a) * blend.x + (c - a) * blend.y + mixed * blend.x * blend.y,
                  slope * (float2(b - a, c - a) + mixed * blend.yx));
}

/// Steep places get less detail, as if water had carried it away.
float erodedNoise(float2 p, int octaves)
{
    float sum = 0.0f;
    float amplitude = 1.0f;
    float2 slope = float2(0, 0);
    [loop] for (int octave = 0; octave < octaves; ++octave)
    {
        float3 n = noise(p);
        slope += n.yz;
        sum += amplitude * n.x / (1.0f + dot(slope, slope));
        amplitude *= 0.5f;
        p = float2(1.6f * p.x - 1.2f * p.y, 1.2f * p.x + 1.6f * p.y);
    }
    return sum;
}

float groundHeight(float2 p, int octaves)
{
    float distance = length(p);
    float rough = erodedNoise(p * 0.33f + 3.7f, octaves);
    float island = 3.6f * exp(-0.16f * distance * distance);
    float shore = 4.4f * smoothstep(11.5f, 27.0f, distance);
    float height = (island + shore) * (0.25f + 1.15f * rough) + 0.5f * rough - 0.75f;
    return min(height, highest);
}

float3 groundNormal(float2 p, float distance)
{
    // As wide as a pixel sees at that distance, so that far slopes do not flicker.
    float e = 0.004f * distance + 0.003f;
    float h = groundHeight(p, 7);
    return normalize(float3(h - groundHeight(p + float2(e, 0), 7), e, h - groundHeight(p + float2(0, e), 7)));
}

/// Distance to the ground, or `limit`.
float march(float3 origin, float3 direction, float limit, int steps, int octaves)
{
    float t = 0.05f;
    if (direction.y > 0.0f)
    {
        limit = min(limit, (highest - origin.y) / direction.y);
    }
    float before = t;
    [loop] for (int i = 0; i < steps; ++i)
    {
        float3 p = origin + direction * t;
        float gap = p.y - groundHeight(p.xz, octaves);
        if (gap < 0.0012f * t || t > limit)
        {
            break;
        }
        before = t;
        t += gap * 0.45f + 0.002f * t;
    }
    // The last step may have gone into the ground, by which far slopes would look like stairs.
    [loop] for (int halving = 0; halving < 5; ++halving)
    {
        float middle = 0.5f * (before + t);
        float3 p = origin + direction * middle;
        if (p.y < groundHeight(p.xz, octaves))
        {
            t = middle;
        }
        else
        {
            before = middle;
        }
    }
    return t > limit ? farthest : t;
}

float sunlight(float3 origin)
{
    float light = 1.0f;
    float t = 0.1f;
    [loop] for (int i = 0; i < 16; ++i)
    {
        float3 p = origin + sunDirection * t;
        float gap = p.y - groundHeight(p.xz, 4);
        light = min(light, 9.0f * gap / t);
        if (light < 0.0f)
        {
            break;
        }
        t += clamp(gap, 0.1f, 0.9f);
    }
    return smoothstep(0.0f, 1.0f, light);
}

float3 throughFog(float3 color, float distance)
{
    return lerp(color, fogColor, 1.0f - exp(-4.32808e-05f * distance * distance * distance));
}

/// Bright enough to be seen through the fog of the farthest distance.
float3 sky(float3 direction)
{
    float toSun = saturate(dot(direction, sunDirection));
    float up = max(direction.y, 0.0f);
    float3 color = lerp(float3(1.30f, 0.62f, 0.42f), float3(0.12f, 0.30f, 0.85f), saturate(sqrt(up) * 1.7f));
    color = lerp(color, float3(0.02f, 0.06f, 0.24f), saturate(up * 1.1f));
    color += sunColor * (0.9f * pow(toSun, 5.0f) + 2.5f * pow(toSun, 48.0f) + 40.0f * smoothstep(0.9982f, 0.9990f, toSun));
    float2 plane = direction.xz / (up + 0.10f);
    float cloud = erodedNoise(plane * 0.55f + float2(iTime * 0.03f, 0.0f), 5);
    float3 lit = lerp(float3(0.95f, 0.62f, 0.75f), 1.6f * sunColor, pow(toSun, 2.0f));
    color = lerp(color, lit, 0.75f * smoothstep(0.72f, 1.35f, cloud) * smoothstep(0.0f, 0.12f, up));
    float2 place = direction.xz / (direction.y + 0.6f) * 55.0f;
    float2 cell = floor(place);
    float2 away = place - cell - 0.5f - 0.5f * (float2(hash(cell + 7.0f), hash(cell + 13.0f)) - 0.5f);
    float star = smoothstep(0.95f, 1.0f, hash(cell)) * smoothstep(0.13f, 0.02f, length(away));
    color += 9.0f * star * saturate(up * 2.2f - 0.3f);
    return throughFog(color, farthest);
}

float3 groundColor(float3 p, float distance)
{
    float3 n = groundNormal(p.xz, distance);
    float grain = lerp(noise(p.xz * 9.0f).x, 0.5f, saturate(distance / 20.0f));
    float3 rock = lerp(float3(0.20f, 0.15f, 0.13f), float3(0.32f, 0.27f, 0.24f), grain);
    float3 grass = lerp(float3(0.06f, 0.13f, 0.04f), float3(0.15f, 0.20f, 0.06f), grain);
    float3 sand = float3(0.42f, 0.33f, 0.22f);
    float3 color = lerp(rock, grass, smoothstep(0.62f, 0.82f, n.y) * smoothstep(1.9f, 1.2f, p.y + 0.6f * grain));
    color = lerp(sand, color, smoothstep(0.04f, 0.16f, p.y + 0.06f * grain));
    float snow = smoothstep(1.45f, 2.2f, p.y + 0.7f * grain) * smoothstep(0.40f, 0.72f, n.y);
    color = lerp(color, float3(0.85f, 0.88f, 0.95f), snow);
    float direct = saturate(dot(n, sunDirection)) * sunlight(p + n * 0.01f);
    float bounce = saturate(0.3f - 0.7f * dot(n, sunDirection));
    float3 light = sunColor * direct + skyColor * (0.55f + 0.45f * n.y) + float3(0.16f, 0.10f, 0.06f) * bounce;
    return color * light * 1.5f;
}

float3 waterColor(float3 p, float3 direction, float distance)
{
    float2 drift = float2(iTime * 0.25f, iTime * 0.17f);
    float3 wide = noise(p.xz * 2.3f + drift);
    float3 fine = noise(p.xz * 8.3f - drift * 1.7f);
    float calm = 1.0f / (1.0f + 0.012f * distance * distance);
    float2 slope = (wide.yz * 0.020f + fine.yz * 0.016f) * calm;
    float3 n = normalize(float3(-slope.x, 1.0f, -slope.y));
    float3 mirrored = reflect(direction, n);
    mirrored.y = abs(mirrored.y) + 0.003f;
    mirrored = normalize(mirrored);
    float t = march(p + float3(0.0f, 0.01f, 0.0f), mirrored, farthest, 44, 4);
    float3 seen = sky(mirrored);
    if (t < farthest)
    {
        seen = throughFog(groundColor(p + mirrored * t, 2.0f * (distance + t)), t);
    }
    float depth = max(-groundHeight(p.xz, 4), 0.0f);
    float3 body = lerp(float3(0.10f, 0.30f, 0.28f), float3(0.01f, 0.05f, 0.08f), 1.0f - exp(-4.0f * depth));
    float mirror = 0.04f + 0.96f * pow(1.0f - saturate(dot(n, -direction)), 5.0f);
    float foam = smoothstep(0.05f, 0.0f, depth + 0.03f * sin(iTime * 1.3f + 6.0f * wide.x));
    return lerp(body, seen, saturate(mirror * 0.92f + 0.08f)) + 0.25f * foam;
}

float4 main(float4 position : SV_POSITION) : SV_TARGET
{
    float2 uv = float2(position.x / width - 0.5f, -position.y / height + 0.5f);
    uv.x *= width / height;

    float angle = iTime * 0.5f;
    float3 origin = float3(10.0f * cos(angle), 1.0f, 10.0f * sin(angle));
    float3 forward = normalize(float3(0.0f, 1.25f, 0.0f) - origin);
    float3 right = normalize(cross(float3(0, 1, 0), forward));
    float3 direction = normalize(uv.x * right + uv.y * cross(forward, right) + 0.9f * forward);

    float toWater = direction.y < 0.0f ? min(-origin.y / direction.y, farthest) : farthest;
    float t = march(origin, direction, toWater, 100, 6);
    float3 color;
    if (t < farthest)
    {
        color = throughFog(groundColor(origin + direction * t, t), t);
    }
    else if (toWater < farthest)
    {
        color = throughFog(waterColor(origin + direction * toWater, direction, toWater), toWater);
    }
    else
    {
        color = sky(direction);
    }
    return float4(pow(saturate(color), 0.7f), 1.0f);
}
