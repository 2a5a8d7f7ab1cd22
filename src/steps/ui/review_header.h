#pragma once

#include <QWidget>

class BarButton;
class Chip;
class NumberLabel;
class QLineEdit;
class QPushButton;
class StepsGuideModel;

// Above the steps: the guide's title, what is marked and hidden in all pictures, and the ways out.
class ReviewHeader : public QWidget {
    Q_OBJECT
public:
    explicit ReviewHeader(StepsGuideModel &model, QWidget *parent = nullptr);

    QLineEdit &title() { return *m_title; }

Q_SIGNALS:
    void pdfWanted();
    void webFolderWanted();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *makeTitle();
    QWidget *makeControls();
    void follow();

    StepsGuideModel &m_model;
    QLineEdit *m_title;
    NumberLabel *m_count;
    Chip *m_marks;
    Chip *m_redacts;
    BarButton *m_improve;
    BarButton *m_export;
    QPushButton *m_create;
};
