// The rectangle of one text, as a strip of two triangles.

cbuffer Text : register(b0)
{
    float4 rectangle; // left, top, width and height in pixels
    float4 color;
    float2 target; // width and height in pixels
    float2 padding;
};

float4 main(uint corner : SV_VertexID) : SV_POSITION
{
    float2 place = rectangle.xy + rectangle.zw * float2(corner & 1, corner >> 1);
    return float4(place.x / target.x * 2.0f - 1.0f, 1.0f - place.y / target.y * 2.0f, 0.0f, 1.0f);
}
