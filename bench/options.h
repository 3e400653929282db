#pragma once

#include <QList>
#include <QStringList>

namespace bench {

/// What the command line asks for.
struct Options
{
    static constexpr int UsualGoods = 100000;
    static constexpr int LeastGoods = 1000;
    /// Codes have six digits, and the saves that are measured take some of them.
    static constexpr int MostGoods = 999900;

    int goods = UsualGoods;
    bool engineOnly = false;
    bool importOnly = false; ///< goods from a file alone, with the memory that it takes
    bool network = false;    ///< the server of the tests, started for the purpose
    QString connection;      ///< or this one; empty: none
    QList<int> delays{0};    ///< milliseconds that are added to each round trip to a server
    bool statements = false; ///< print the texts of one opening and one save
    bool help = false;
};

/// Throws std::invalid_argument with the words for the user.
Options ReadOptions(const QStringList &arguments);
QString HelpText();

} // namespace bench
