// The dot products of one pair of vectors of each width. Every group computes all three.

StructuredBuffer<float2> Buffer0Vec2 : register(t0);
StructuredBuffer<float2> Buffer1Vec2 : register(t1);
StructuredBuffer<float3> Buffer0Vec3 : register(t2);
StructuredBuffer<float3> Buffer1Vec3 : register(t3);
StructuredBuffer<float4> Buffer0Vec4 : register(t4);
StructuredBuffer<float4> Buffer1Vec4 : register(t5);
RWStructuredBuffer<float> BufferOutVec : register(u0);

[numthreads(1, 1, 1)]
void main()
{
    BufferOutVec[0] = dot(Buffer0Vec2[0], Buffer1Vec2[0]);
    BufferOutVec[1] = dot(Buffer0Vec3[0], Buffer1Vec3[0]);
    BufferOutVec[2] = dot(Buffer0Vec4[0], Buffer1Vec4[0]);
}
