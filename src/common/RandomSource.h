#pragma once

#include <QRandomGenerator>

// Random numbers in [0, 1), e.g. a new sticky note's colour; a seam so tests can choose.
class RandomSource
{
public:
    virtual ~RandomSource() = default;
    virtual double next() = 0;
};

class SystemRandomSource final : public RandomSource
{
public:
    double next() override { return QRandomGenerator::global()->generateDouble(); }
};
