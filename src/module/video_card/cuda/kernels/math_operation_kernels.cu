#include "kernels.h"
#include "operations.h"

VEXIL_KERNELS_BEGIN

VEXIL_INLINE Word elementIndex() { return blockIndex() * blockSize() + threadIndex(); }

/// Volatile, so that every thread loads its operands, whatever the operation of its block makes of them.
template <typename T>
VEXIL_INLINE T loadOperand(const T* from) {
    return *static_cast<const volatile T*>(from);
}

VEXIL_KERNEL cuda_kernel_advanced_execute_integer(const int* a, const int* b, const int* c, int* out) {
    const Word i = elementIndex();
    const int x = loadOperand(a + i), y = loadOperand(b + i), z = loadOperand(c + i);
    int result = 0;
    switch (blockIndex()) {
    case 0:
        result = absolute(x);
        break;
    case 1:
        result = negate(x);
        break;
    case 2:
        result = smaller(x, y);
        break;
    case 3:
        result = larger(x, y);
        break;
    case 4:
        result = multiplyAdd(x, y, z);
        break;
    case 5:
        result = addWithCarryOut(x, y);
        break;
    case 6:
        result = subtractWithBorrowOut(x, y);
        break;
    case 7:
        result = remainder(x, y);
        break;
    case 8:
        result = sumOfAbsoluteDifference(x, y, z);
        break;
    default:
        break;
    }
    out[i] = result;
}

VEXIL_KERNEL cuda_kernel_standard_execute_integer(const int* a, const int* b, const int*, int* out) {
    const Word i = elementIndex();
    const int x = loadOperand(a + i), y = loadOperand(b + i);
    int result = 0;
    switch (blockIndex()) {
    case 0:
        result = add(x, y);
        break;
    case 1:
        result = subtract(x, y);
        break;
    case 2:
        result = multiplyLow(x, y);
        break;
    case 3:
        result = divide(x, y);
        break;
    default:
        break;
    }
    out[i] = result;
}

VEXIL_KERNEL cuda_kernel_advanced_execute_float(const float* a, const float* b, const float* c, float* out) {
    const Word i = elementIndex();
    const float x = loadOperand(a + i), y = loadOperand(b + i), z = loadOperand(c + i);
    float result = 0;
    switch (blockIndex()) {
    case 0:
        result = absolute(x);
        break;
    case 1:
        result = negate(x);
        break;
    case 2:
        result = smaller(x, y);
        break;
    case 3:
        result = larger(x, y);
        break;
    case 4:
        result = fusedMultiplyAdd(x, y, z);
        break;
    case 5:
        result = multiplyAdd(x, y, z);
        break;
    case 6:
        result = exp2Approximate(x);
        break;
    case 7:
        result = reciprocal(x);
        break;
    case 8:
        result = squareRoot(x);
        break;
    case 9:
        result = reciprocalRootApproximate(x);
        break;
    case 10:
        result = log2Approximate(x);
        break;
    case 11:
        result = sineApproximate(x);
        break;
    case 12:
        result = cosineApproximate(x);
        break;
    default:
        break;
    }
    out[i] = result;
}

VEXIL_KERNEL cuda_kernel_standard_execute_float(const float* a, const float* b, const float*, float* out) {
    const Word i = elementIndex();
    const float x = loadOperand(a + i), y = loadOperand(b + i);
    float result = 0;
    switch (blockIndex()) {
    case 0:
        result = add(x, y);
        break;
    case 1:
        result = subtract(x, y);
        break;
    case 2:
        result = multiply(x, y);
        break;
    case 3:
        result = divide(x, y);
        break;
    default:
        break;
    }
    out[i] = result;
}

VEXIL_KERNELS_END
