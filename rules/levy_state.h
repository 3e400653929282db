#pragma once

#include "host/data/quantity.h"

namespace goods {

using host::Quantity;

/// How a levy (the tax, the toll) is set for one good.
enum class LevyState {
    GlobalSetting, ///< the percent of the program's settings
    OwnPercent,    ///< a percent of the good's own
    Exempt,
};

struct Levy
{
    LevyState state = LevyState::GlobalSetting;
    Quantity percent = 0; ///< of meaning for OwnPercent only
};

/// A levy as the good's row keeps it.
struct StoredLevy
{
    bool exempt = false;
    Quantity percent = 0;
};

/// An own percent of 0 is an exemption.
inline StoredLevy Stored(const Levy &levy)
{
    switch (levy.state) {
    case LevyState::OwnPercent:
        return {levy.percent == 0, levy.percent};
    case LevyState::Exempt:
        return {true, 0};
    case LevyState::GlobalSetting:
        break;
    }
    return {false, 0};
}

inline Levy Loaded(const StoredLevy &stored)
{
    if (stored.exempt)
        return {LevyState::Exempt, 0};
    if (stored.percent != 0)
        return {LevyState::OwnPercent, stored.percent};
    return {};
}

} // namespace goods
