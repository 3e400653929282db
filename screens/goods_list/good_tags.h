#pragma once

#include "host/controls/tags_panel.h"

#include <QScrollArea>

class QGridLayout;

namespace host {
class Dataset;
}

namespace goods_list {

/// The tags of one good.
struct GoodTags
{
    int Code = 0;
    QString Name;
    QString Tags; ///< tag codes joined by ","
};

/// Reads the tags that can be put on a good, with the colours of their swatches, from the rows of
/// TGood_DM::GetAllTagsWithColor().
QList<host::Tag> ReadTags(const host::Dataset &tags);

/// A line for each of several goods: its name and its tags. The tags of a single good can be changed here.
class GoodTagsView : public QScrollArea
{
    Q_OBJECT

public:
    explicit GoodTagsView(QWidget *parent = nullptr);

    void SetAvailable(const QList<host::Tag> &tags) { m_available = tags; }
    /// Shows the goods in their order, and that there are `more`. `editable` lets the user change the tags when there
    /// is only one good.
    void Show(const QList<GoodTags> &goods, bool editable, int more);

signals:
    /// The user changed the tags of a good: tag codes joined by ",".
    void Changed(int code, const QString &tags);

private:
    QList<host::Tag> m_available;
};

} // namespace goods_list
