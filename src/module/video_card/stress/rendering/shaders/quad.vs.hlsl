// A quad over the window, with its corners in pixels from the middle.

cbuffer MatrixBuffer : register(b0)
{
    row_major float4x4 worldMatrix;
    row_major float4x4 viewMatrix;
    row_major float4x4 projectionMatrix;
};

float4 main(float3 position : POSITION) : SV_POSITION
{
    float4 place = mul(float4(position, 1.0f), worldMatrix);
    place = mul(place, viewMatrix);
    return mul(place, projectionMatrix);
}
