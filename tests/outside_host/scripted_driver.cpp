#include "tests/outside_host/scripted_driver.h"

#include <QtSql/QSqlField>
#include <QtSql/QSqlRecord>

namespace {

class ScriptedResult : public QSqlResult
{
public:
    ScriptedResult(const QSqlDriver *driver, const QList<ScriptedAnswer> &answers)
        : QSqlResult(driver), answers_(answers)
    {}

protected:
    bool reset(const QString &statement) override
    {
        answer_ = {{}, {u"Code"_qs}, {}};
        for (const ScriptedAnswer &answer : answers_) {
            if (statement.contains(answer.part, Qt::CaseInsensitive)) {
                answer_ = answer;
                break;
            }
        }
        setSelect(true);
        setActive(true);
        setAt(QSql::BeforeFirstRow);
        return true;
    }
    QVariant data(int column) override { return answer_.rows.at(at()).value(column); }
    bool isNull(int column) override { return data(column).isNull(); }
    bool fetch(int row) override
    {
        const bool there = row >= 0 && row < answer_.rows.size();
        setAt(there ? row : int(QSql::AfterLastRow));
        return there;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(static_cast<int>(answer_.rows.size()) - 1); }
    bool fetchNext() override { return fetch(at() + 1); }
    int size() override { return -1; }
    int numRowsAffected() override { return 0; }
    QSqlRecord record() const override
    {
        QSqlRecord record;
        for (int i = 0; i < answer_.columns.size(); ++i) {
            const QVariant sample = answer_.rows.isEmpty() ? QVariant(0) : answer_.rows.first().value(i);
            record.append(QSqlField(answer_.columns.at(i), sample.metaType()));
        }
        return record;
    }

private:
    QList<ScriptedAnswer> answers_;
    ScriptedAnswer answer_;
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
    return new ScriptedResult(this, answers_);
}
