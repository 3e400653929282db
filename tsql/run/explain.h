// What statements become, without carrying them out.
#pragma once

#include "tsql/run/plan.h"

namespace tsql {

/// Compiles batch after batch. Definitions count for what follows them, and nowhere else.
class Explainer
{
public:
    explicit Explainer(Catalogue catalogue) : m_catalogue(std::move(catalogue)) {}

    /// Adds the lines to print: SQLite's texts with their parameters below them, and as remarks the statements that the
    /// interpreter carries out by itself. Throws Error, behind the lines of what stands before.
    void Explain(const QString &batch, QStringList &lines);

private:
    void ExplainAll(const std::vector<StatementPtr> &statements, const VariableTypes &variables);
    void ExplainOne(const Statement &statement, const VariableTypes &variables);
    void Define(const Statement &statement, const VariableTypes &variables);
    void ExplainValue(const Expression *value, const VariableTypes &variables);
    void Print(const Compiled &compiled);
    void Remark(const Statement &statement);

    Catalogue m_catalogue;
    QStringList *m_lines = nullptr; ///< while a batch is explained
};

} // namespace tsql
