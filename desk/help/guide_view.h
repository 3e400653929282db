#pragma once

#include <QTextBrowser>

namespace desk {

/// Shows pages of the guide: from right to left, pictures so small that the keys below them are seen.
class GuideView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit GuideView(QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;

protected:
    void doSetSource(const QUrl &page, QTextDocument::ResourceType type) override;

private:
    void Arrange();
};

} // namespace desk
