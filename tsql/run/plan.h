// Parsed batches and their compiled statements, kept for texts that differ in their literals only.
#pragma once

#include "tsql/run/sqlite.h"
#include "tsql/write/writer.h"

#include <QCache>

#include <unordered_map>

namespace tsql {

/** One compiled statement and its prepared forms, at most one idle form for each handle. */
class CompiledEntry
{
public:
    CompiledEntry(Compiled compiled, quint64 catalogueVersion);

    const Compiled compiled;
    const quint64 catalogueVersion;
    const QByteArray sql;
    const bool usesTemporary; ///< names a temporary table: only the main handle knows those

private:
    friend class Lease;
    struct Slot
    {
        sqlite3 *handle;
        PreparedStatement statement;
    };
    std::vector<Slot> m_idle;
};

/** The use of a prepared form: taken from the entry or made, given back (reset) at the end. */
class Lease
{
public:
    Lease() = default;
    Lease(std::shared_ptr<CompiledEntry> entry, const SqliteHandle &handle);
    ~Lease() { Release(); }
    Lease(Lease &&other) noexcept = default;
    Lease &operator=(Lease &&other) noexcept;

    sqlite3_stmt *Prepared() const { return m_statement.get(); }
    const std::shared_ptr<CompiledEntry> &SharedEntry() const { return m_entry; }
    explicit operator bool() const { return m_statement != nullptr; }
    void Release();

private:
    std::shared_ptr<CompiledEntry> m_entry;
    PreparedStatement m_statement;
    sqlite3 *m_handle = nullptr;
};

/** A parsed text with what has been compiled of it so far. */
class Plan
{
public:
    /** Owns the batch. */
    explicit Plan(Batch batch);
    /** A procedure's body; keeps the definition alive. */
    explicit Plan(std::shared_ptr<const CreateProcedureStatement> procedure);

    const std::vector<StatementPtr> &Statements() const;
    /**
     * Whether the syntax tree stands for a text of the same shape with these literals: the lengths of types and the
     * like are part of the tree, and a definition keeps its text as it was written.
     */
    bool Serves(const std::vector<Literal> &literals) const;
    const CreateProcedureStatement *Procedure() const { return m_procedure.get(); }
    /** The variables that the text declares anywhere, with the parameters. */
    const VariableTypes &Variables() const { return m_variables; }
    /** True when @@ROWCOUNT is read somewhere: rows have to be counted before the text goes on. */
    bool AsksRowCount() const { return m_asksRowCount; }
    void AddVariable(const QString &name, const SqlType &type);

    /**
     * The compiled form of a node (statement, value or condition) that serves these literals, or null. `literals` is
     * null where they stand in the text itself (procedures).
     */
    std::shared_ptr<CompiledEntry> Find(const void *node, const std::vector<Literal> *literals, quint64 version) const;
    /** Keeps what was compiled for these literals. */
    std::shared_ptr<CompiledEntry> Add(const void *node, const std::vector<Literal> *literals, quint64 version,
                                       Compiled compiled);

private:
    static constexpr size_t MaxVariants = 8;

    struct Variant
    {
        std::shared_ptr<CompiledEntry> entry;
        std::vector<Literal> literals; ///< those that the entry depends on, in the order of its needs
    };

    static bool Fits(const Variant &variant, const std::vector<Literal> *literals);
    void Collect(const std::vector<StatementPtr> &statements);
    void Collect(const Statement &statement);

    Batch m_batch;
    std::shared_ptr<const CreateProcedureStatement> m_procedure;
    VariableTypes m_variables;
    bool m_asksRowCount = false;
    bool m_defines = false; ///< creates, changes or drops something
    std::unordered_map<const void *, std::vector<Variant>> m_entries;
};

/** The folded form of a variable's name. */
QString VariableKey(const QString &name);

/** The plans of one connection by the shape of their text. */
class PlanCache
{
public:
    /** Parses a text that is met for the first time. `literals` receives the literals of this very text. */
    std::shared_ptr<Plan> FindPlan(const QString &text, const QString &scope, std::vector<Literal> &literals);
    std::shared_ptr<Plan> FindPlan(const std::shared_ptr<const CreateProcedureStatement> &procedure);
    /** Takes the memory of literals that are no longer needed. */
    void Recycle(std::vector<Literal> literals) { m_shape.literals = std::move(literals); }
    void clear();

private:
    static constexpr int MaxPlans = 500;
    static constexpr qsizetype LongestKept = 20'000; ///< characters: long texts are scripts and come once

    QCache<QString, std::shared_ptr<Plan>> m_plans{MaxPlans};
    std::shared_ptr<Plan> m_last; ///< what ran last, and most often runs next
    QString m_lastKey;
    QHash<QString, std::shared_ptr<Plan>> m_procedures;
    Shape m_shape;
};

} // namespace tsql
