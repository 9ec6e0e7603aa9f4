// One group for each row of the standard integer table, one thread for each of its five columns.

StructuredBuffer<int> Buffer0 : register(t0);
StructuredBuffer<int> Buffer1 : register(t1);
RWStructuredBuffer<int> BufferOut : register(u0);

// Spelled out, so that every card runs the same steps: an unsigned division of the magnitudes, and the sign.
int divide(int a, int b)
{
    const int negative = (a ^ b) & 0x80000000;
    const uint quotient = uint(max(a, -a)) / uint(max(b, -b));
    return negative != 0 ? -int(quotient) : int(quotient);
}

[numthreads(5, 1, 1)]
void main(uint3 group : SV_GroupID, uint3 thread : SV_DispatchThreadID)
{
    const uint id = thread.x;
    const int a = Buffer0[id];
    const int b = Buffer1[id];
    int result;
    switch (group.x)
    {
    case 0: result = a + b; break;
    case 1: result = a * b; break;
    case 2: result = divide(a, b); break;
    default: result = 0; break;
    }
    BufferOut[id] = result;
}
