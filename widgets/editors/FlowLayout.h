#pragma once

#include "widgets_export.h"

#include <QLayout>
#include <QList>
#include <QStyle>

// Places its items left to right and starts a new line when the next item would
// pass the right edge, like words in a paragraph.
class WIDGETS_EXPORT FlowLayout : public QLayout
{
    Q_OBJECT
public:
    // A spacing of -1 takes the style's spacing.
    explicit FlowLayout(QWidget *parent, int margin = -1, int hSpacing = -1, int vSpacing = -1);
    explicit FlowLayout(int margin = -1, int hSpacing = -1, int vSpacing = -1);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int horizontalSpacing() const;
    int verticalSpacing() const;
    Qt::Orientations expandingDirections() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;
    QSize sizeHint() const override;
    QLayoutItem *takeAt(int index) override;

private:
    int doLayout(const QRect &rect, bool testOnly) const;
    int smartSpacing(QStyle::PixelMetric pm) const;
    // The spacing between items along `orientation`, asking the item's own style
    // when the layout has none.
    int itemSpacing(int layoutSpacing, QLayoutItem *item, Qt::Orientation orientation) const;

    QList<QLayoutItem *> m_itemList;
    int m_hSpace;
    int m_vSpace;
};
