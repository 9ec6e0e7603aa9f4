// One group for each row of the advanced integer table, one thread for each of its five columns.

StructuredBuffer<int> Buffer0 : register(t0);
StructuredBuffer<int> Buffer1 : register(t1);
StructuredBuffer<int> Buffer2 : register(t2);
RWStructuredBuffer<int> BufferOut : register(u0);

[numthreads(5, 1, 1)]
void main(uint3 group : SV_GroupID, uint3 thread : SV_DispatchThreadID)
{
    const uint id = thread.x;
    const int a = Buffer0[id];
    const int b = Buffer1[id];
    int result;
    switch (group.x)
    {
    case 0: result = mad(a, b, Buffer2[id]); break;
    case 1: result = min(a, b); break;
    case 2: result = max(a, b); break;
    default: result = 0; break;
    }
    BufferOut[id] = result;
}
