// KvBenchMath: a million matrix products, quaternion products and rotations by quaternions, beside
// the same loops written by hand over plain float arrays. Both do the same additions and
// multiplications in the same order, so they must end with the same bytes.

#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <vector>

#include "bench/KvBenchRandom.h"
#include "bench/KvBenchReport.h"
#include "bench/KvBenchRounds.h"
#include "bench/KvBenchStatistics.h"
#include "math/KvMatrix44.h"
#include "math/KvQuaternion.h"
#include "math/KvVector3.h"

namespace {

/// The values of one pass stay in the processor's caches; each pass goes on with the results of the
/// pass before, so that none can be left out.
constexpr std::size_t kValues = 1000;
constexpr int kPasses = 1000;
constexpr double kGoal = 1.2;

/// The values and the same numbers as plain floats, one after the other.
template <typename T>
struct CSample
{
    std::vector<T> values;
    std::vector<float> floats;

    void Add(const T& value)
    {
        std::array<float, sizeof(T) / sizeof(float)> components;
        std::memcpy(components.data(), &value, sizeof(T));
        values.push_back(value);
        floats.insert(floats.end(), components.begin(), components.end());
    }

    [[nodiscard]] bool IsSame() const
    {
        return std::memcmp(values.data(), floats.data(), floats.size() * sizeof(float)) == 0;
    }
};

struct CSamples
{
    CSample<CKvMatrix44> matrices;
    CSample<CKvMatrix44> rotations;
    CSample<CKvQuaternion> quaternions;
    CSample<CKvQuaternion> turns;
    CSample<CKvVector3> vectors;
};

/// Rotations throughout, so that a thousand products neither grow nor vanish.
CSamples MakeSamples()
{
    CKvBenchRandom random(1);
    const auto next = [&random] { return static_cast<float>(random.Below(2001)) / 1000.0F - 1.0F; };
    CSamples samples;
    for (std::size_t i = 0; i < kValues; ++i) {
        for (int second = 0; second < 2; ++second) {
            CKvQuaternion quaternion(next(), next(), next(), next() + 2.0F);
            quaternion.normalize();
            CKvMatrix44 matrix;
            matrix.setRotation(quaternion, 1);
            (second == 0 ? samples.quaternions : samples.turns).Add(quaternion);
            (second == 0 ? samples.matrices : samples.rotations).Add(matrix);
        }
        samples.vectors.Add(CKvVector3(next(), next(), next()));
    }
    return samples;
}

void MultiplyMatrices(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i)
        samples.matrices.values[i] =
            samples.matrices.values[i].MultiplyCorrect(samples.rotations.values[i]);
}

void MultiplyMatricesByHand(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i) {
        float* a = &samples.matrices.floats[16 * i];
        const float* b = &samples.rotations.floats[16 * i];
        float product[16];
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                float sum = a[4 * row] * b[column];
                for (std::size_t k = 1; k < 4; ++k)
                    sum += a[4 * row + k] * b[4 * k + column];
                product[4 * row + column] = sum;
            }
        }
        std::memcpy(a, product, sizeof(product));
    }
}

void MultiplyQuaternions(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i)
        samples.quaternions.values[i] *= samples.turns.values[i];
}

void MultiplyQuaternionsByHand(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i) {
        float* a = &samples.quaternions.floats[4 * i];
        const float* b = &samples.turns.floats[4 * i];
        const float x = a[3] * b[0] + a[0] * b[3] + a[1] * b[2] - a[2] * b[1];
        const float y = a[3] * b[1] + a[1] * b[3] + a[2] * b[0] - a[0] * b[2];
        const float z = a[3] * b[2] + a[2] * b[3] + a[0] * b[1] - a[1] * b[0];
        const float w = a[3] * b[3] - a[0] * b[0] - a[1] * b[1] - a[2] * b[2];
        a[0] = x;
        a[1] = y;
        a[2] = z;
        a[3] = w;
    }
}

void RotateVectors(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i)
        samples.vectors.values[i] = samples.turns.values[i].Rotate(samples.vectors.values[i]);
}

void RotateVectorsByHand(CSamples& samples)
{
    for (std::size_t i = 0; i < kValues; ++i) {
        const float* q = &samples.turns.floats[4 * i];
        float* v = &samples.vectors.floats[3 * i];
        const float tx = 2.0F * (q[1] * v[2] - q[2] * v[1]);
        const float ty = 2.0F * (q[2] * v[0] - q[0] * v[2]);
        const float tz = 2.0F * (q[0] * v[1] - q[1] * v[0]);
        v[0] = v[0] + tx * q[3] + (q[1] * tz - q[2] * ty);
        v[1] = v[1] + ty * q[3] + (q[2] * tx - q[0] * tz);
        v[2] = v[2] + tz * q[3] + (q[0] * ty - q[1] * tx);
    }
}

using Loop = void (*)(CSamples&);

struct CCompared
{
    const char* what;
    Loop ours;
    Loop byHand;
    std::vector<double> oursMs;
    std::vector<double> byHandMs;
};

/// CPU time, which a busy machine stretches least.
double MeasureMs(Loop loop, CSamples& samples)
{
    const std::clock_t start = std::clock();
    for (int pass = 0; pass < kPasses; ++pass)
        loop(samples);
    return static_cast<double>(std::clock() - start) * 1000.0 / CLOCKS_PER_SEC;
}

}  // namespace

int main(int argc, char** argv)
{
    int rounds = 21;
    if (!KvReadRoundsOption(argc, argv, "KvBenchMath", rounds))
        return 2;
    CSamples samples = MakeSamples();
    std::array<CCompared, 3> compared = {
        {{"matrix products / by hand", MultiplyMatrices, MultiplyMatricesByHand, {}, {}},
         {"quaternion products / by hand", MultiplyQuaternions, MultiplyQuaternionsByHand, {}, {}},
         {"rotations by quaternions / by hand", RotateVectors, RotateVectorsByHand, {}, {}}}};
    for (int round = 0; round < rounds; ++round) {
        for (CCompared& pair : compared) {
            pair.oursMs.push_back(MeasureMs(pair.ours, samples));
            pair.byHandMs.push_back(MeasureMs(pair.byHand, samples));
        }
    }
    if (!samples.matrices.IsSame() || !samples.quaternions.IsSame() || !samples.vectors.IsSame()) {
        std::fprintf(stderr, "bench: the results differ from those by hand\n");
        return 1;
    }

    std::printf("medians of %d rounds of 1,000,000 operations\n\n", rounds);
    std::vector<CKvBenchFigure> figures;
    for (const CCompared& pair : compared) {
        const double ours = KvMedian(pair.oursMs);
        const double byHand = KvMedian(pair.byHandMs);
        std::printf("%-35s %7.2f ms / %7.2f ms\n", pair.what, ours, byHand);
        figures.push_back({pair.what, ours / byHand, kGoal});
    }
    std::printf("\n");
    KvPrintFigures(figures);
    return 0;
}
