#include "tests/outside_host/scripted_driver.h"

#include <QSqlField>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

class ScriptedResult : public QSqlResult
{
public:
    ScriptedResult(const QSqlDriver *driver, const QList<ScriptedAnswer> &answers)
        : QSqlResult(driver), m_answers(answers)
    {}

protected:
    bool reset(const QString &statement) override
    {
        m_answer = {{}, {u"Code"_s}, {}};
        for (const ScriptedAnswer &answer : m_answers) {
            if (statement.contains(answer.part, Qt::CaseInsensitive)) {
                m_answer = answer;
                break;
            }
        }
        setSelect(true);
        setActive(true);
        setAt(QSql::BeforeFirstRow);
        return true;
    }
    QVariant data(int column) override { return m_answer.rows.at(at()).value(column); }
    bool isNull(int column) override { return data(column).isNull(); }
    bool fetch(int row) override
    {
        const bool there = row >= 0 && row < m_answer.rows.size();
        setAt(there ? row : int(QSql::AfterLastRow));
        return there;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(static_cast<int>(m_answer.rows.size()) - 1); }
    bool fetchNext() override { return fetch(at() + 1); }
    int size() override { return -1; }
    int numRowsAffected() override { return 0; }
    QSqlRecord record() const override
    {
        QSqlRecord record;
        for (int i = 0; i < m_answer.columns.size(); ++i) {
            const QVariant sample = m_answer.rows.isEmpty() ? QVariant(0) : m_answer.rows.first().value(i);
            record.append(QSqlField(m_answer.columns.at(i), sample.metaType()));
        }
        return record;
    }

private:
    QList<ScriptedAnswer> m_answers;
    ScriptedAnswer m_answer;
};

} // namespace

bool ScriptedDriver::hasFeature(DriverFeature feature) const
{
    return feature == Transactions || feature == Unicode;
}

bool ScriptedDriver::open(const QString &, const QString &, const QString &, const QString &, int, const QString &)
{
    setOpen(true);
    setOpenError(false);
    return true;
}

void ScriptedDriver::close()
{
    setOpen(false);
}

QSqlResult *ScriptedDriver::createResult() const
{
    return new ScriptedResult(this, m_answers);
}
