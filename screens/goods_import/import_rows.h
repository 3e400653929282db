#pragma once

#include "data/goods/goods_import_judge.h"

#include <QAbstractTableModel>

#include <vector>

namespace goods_import {

/// The rows of a file with what becomes of them, for a grid: fields `Line`, `State`, `Note` (faults, or what changes),
/// `Code`, `Name`, and `C0`, `C1`, … for the cells of the file.
class ImportRows : public QAbstractTableModel
{
public:
    enum class Shown { All, Faulty, NotSame };

    /// What is shown; the data outlive the model or its next Show().
    struct Source
    {
        const goods::ImportTable *table = nullptr;
        const goods::ImportPlan *plan = nullptr;
        const goods::ImportReader *reader = nullptr;
        const goods::ImportKnown *known = nullptr;
        const QList<goods::ImportFieldInfo> *fields = nullptr;
    };

    void Show(const Source &source, Shown shown);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    goods::ImportVerdict VerdictAt(int row) const { return EntryAt(row).verdict; }

private:
    const goods::ImportPlan::Entry &EntryAt(int row) const;
    QString Note(const goods::ImportPlan::Entry &entry) const;
    QString Change(const goods::ImportRow &row, const goods::ImportValue &value) const;
    QString Name(const goods::ImportPlan::Entry &entry) const;
    /// What a stored value is called: groups by their names.
    QString Readable(goods::ImportField field, const QString &stored) const;

    Source m_source;
    std::vector<size_t> m_shown; ///< places in the plan
};

/// "جدید", "تغییر", …
QString VerdictText(goods::ImportVerdict verdict);

} // namespace goods_import
