#pragma once

#include <QSqlDriver>
#include <QSqlResult>
#include <QStringList>
#include <QVariant>

/// What a statement gives.
struct ScriptedAnswer
{
    QString part; ///< answers statements that contain this
    QStringList columns;
    QList<QVariantList> rows;
};

/// A database that knows a few answers by heart; every other statement gives no rows.
class ScriptedDriver : public QSqlDriver
{
    Q_OBJECT

public:
    explicit ScriptedDriver(const QList<ScriptedAnswer> &answers) : m_answers(answers) {}

    bool hasFeature(DriverFeature feature) const override;
    bool open(const QString &, const QString &, const QString &, const QString &, int, const QString &) override;
    void close() override;
    QSqlResult *createResult() const override;
    bool beginTransaction() override { return true; }
    bool commitTransaction() override { return true; }
    bool rollbackTransaction() override { return true; }

private:
    QList<ScriptedAnswer> m_answers;
};
