#pragma once

#include "core/test_run_arguments.h"
#include "module/video_card/cuda/math_tables.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vexil::module::video_card {

/// One stage of an arithmetic test: a table of operands goes to the card, one kernel computes, and the
/// results are compared with the stored ones. The stage holds nothing on the card between runs.
class CudaAbstractMathOperation {
public:
    /// Which table and which kernel a stage takes.
    static constexpr std::int32_t standardMode = 0;
    static constexpr std::int32_t advancedMode = 1;

    CudaAbstractMathOperation(const CudaAbstractMathOperation&) = delete;
    CudaAbstractMathOperation& operator=(const CudaAbstractMathOperation&) = delete;
    virtual ~CudaAbstractMathOperation() = default;

    /// Returns a `TestResult`; what is not `Passed` has been reported. Non-zero picks the advanced kernel.
    virtual std::uint8_t run(std::int32_t advanced) = 0;

protected:
    explicit CudaAbstractMathOperation(const core::TestRunArguments& arguments) : arguments_(arguments) {}

    virtual void prepareStandard() = 0;
    virtual void prepareAdvanced() = 0;
    /// Four buffers of `bufferBytes_`; false at the first that cannot be had.
    virtual bool allocate() = 0;
    virtual bool copyInputs() = 0;
    /// Frees until the first failure, forgets all four buffers and resets the device in any case.
    virtual bool release() = 0;

    const core::TestRunArguments& arguments_;
    std::uint64_t bufferBytes_ = 0;
    std::uint32_t operationCount_ = 0;
    std::uint32_t valuesPerOperation_ = 0;
};

/// What the stages of both element types have in common.
template <typename T>
class CudaMathOperations : public CudaAbstractMathOperation {
public:
    std::uint8_t run(std::int32_t advanced) override;

protected:
    using CudaAbstractMathOperation::CudaAbstractMathOperation;

    bool allocate() override;
    bool copyInputs() override;
    bool release() override;
    void prepare(std::span<const MathRow<T>> rows);
    [[nodiscard]] virtual bool isRight(std::size_t element, T result) const = 0;

    std::vector<T> inputA_, inputB_, inputC_; ///< row after row
    std::vector<T> expected_;

private:
    bool releaseOrReport();
    std::uint8_t finishWithoutCommunication();

    T *a_ = nullptr, *b_ = nullptr, *c_ = nullptr, *out_ = nullptr; ///< on the card
};

/// Signed 32-bit integers, compared exactly.
class CudaMathOperationsInt final : public CudaMathOperations<std::int32_t> {
public:
    /// A mode that is none of the two leaves the tables empty.
    CudaMathOperationsInt(std::int32_t mode, const core::TestRunArguments& arguments);

protected:
    void prepareStandard() override;
    void prepareAdvanced() override;
    [[nodiscard]] bool isRight(std::size_t element, std::int32_t result) const override;
};

/// Single precision. The comparison lets more pass than a distance would, on purpose; see `isFloatRight`.
class CudaMathOperationsFloat final : public CudaMathOperations<float> {
public:
    CudaMathOperationsFloat(std::int32_t mode, const core::TestRunArguments& arguments);

protected:
    void prepareStandard() override;
    void prepareAdvanced() override;
    [[nodiscard]] bool isRight(std::size_t element, float result) const override;

private:
    void takeTolerances(std::span<const MathRow<float>> rows);

    std::vector<std::int32_t> maxUlps_; ///< one entry a row
    std::vector<float> absoluteTolerance_;
};

/// Whether a result counts as right: within the tolerance; or NaN or infinite on either side; or, beyond the
/// tolerance, of the other sign; or at most `maxUlps` steps of the bit pattern away.
[[nodiscard]] bool isFloatRight(float result, float expected, std::int32_t maxUlps, float absoluteTolerance);

} // namespace vexil::module::video_card
