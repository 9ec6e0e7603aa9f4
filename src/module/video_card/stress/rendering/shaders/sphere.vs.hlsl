// The corners of the sphere, and a little noise for the vertex stage to do.

#include "fractal_noise.hlsli"

cbuffer VS_CONSTANT_BUFFER : register(b0)
{
    row_major float4x4 model;
    row_major float4x4 view;
    row_major float4x4 projection;
};

struct Vertex
{
    float3 position : POSITION;
    float3 normal : NORMAL;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;
};

struct Corner
{
    float4 position : SV_POSITION;
    float3 normal : NORMAL;
    float4 color : COLOR;
    float2 textureCoordinate : TEXCOORD;
};

Corner main(Vertex vertex)
{
    Corner corner;
    float4 position = mul(float4(vertex.position, 1.0f), model);
    position = mul(position, view);
    corner.position = mul(position, projection);
    corner.normal = vertex.normal;
    corner.color = vertex.color;
    float2 noise = float2(fractalNoise(vertex.textureCoordinate), fractalNoise(vertex.textureCoordinate.yx + 17.0f));
    corner.textureCoordinate = normalize(noise);
    return corner;
}
