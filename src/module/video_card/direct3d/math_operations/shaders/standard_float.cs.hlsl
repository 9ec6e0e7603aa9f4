// One group for each row of the standard float table, one thread for each of its five columns. The table has rows for
// the first three cases.

StructuredBuffer<float> Buffer0 : register(t0);
StructuredBuffer<float> Buffer1 : register(t1);
StructuredBuffer<float> Buffer2 : register(t2);
RWStructuredBuffer<float> BufferOut : register(u0);

[numthreads(5, 1, 1)]
void main(uint3 group : SV_GroupID, uint3 thread : SV_DispatchThreadID)
{
    const uint id = thread.x;
    const float a = Buffer0[id];
    const float b = Buffer1[id];
    float result;
    switch (group.x)
    {
    case 0: result = a + b; break;
    case 1: result = a * b; break;
    case 2: result = a / b; break;
    case 3: result = exp2(a); break;
    case 4: result = sqrt(a); break;
    case 5: result = rsqrt(a); break;
    case 6: result = log2(a); break;
    case 7: result = sin(a); break;
    case 8: result = cos(a); break;
    case 9: result = frac(a); break;
    case 10: result = mad(a, b, Buffer2[id]); break;
    case 11: result = min(a, b); break;
    case 12: result = max(a, b); break;
    case 13: result = rcp(a); break;
    default: result = 0.0f; break;
    }
    BufferOut[id] = result;
}
