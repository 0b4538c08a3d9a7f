// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/DropZonePanelController.h"

#include "AppFixture.h"

using namespace Qt::StringLiterals;

namespace {

/// Notes what panels are told, each under its number.
class RecordingPanel : public DropZonePanel
{
public:
    RecordingPanel(QStringList &calls, int number)
        : m_calls(calls)
        , m_number(QString::number(number))
    {
    }
    ~RecordingPanel() override { m_calls += m_number + u" gone"_s; }

    void orderFront() override { m_calls += m_number + u" front"_s; }
    void orderOut() override { m_calls += m_number + u" out"_s; }

private:
    QStringList &m_calls;
    const QString m_number;
};

class DropZonePanels : public AppFixture
{
protected:
    void SetUp() override { start(); }

    DropZonePanelController::PanelFactory factory()
    {
        return [this](AppModel &model) {
            EXPECT_EQ(&model, m_model.get());
            return std::make_unique<RecordingPanel>(m_calls, ++m_made);
        };
    }

    QStringList m_calls;
    int m_made = 0;
};

} // namespace

TEST_F(DropZonePanels, hiding_what_was_never_shown_makes_no_panel)
{
    DropZonePanelController controller(factory());

    controller.setVisible(false, *m_model);

    EXPECT_EQ(m_made, 0);
    EXPECT_EQ(m_calls, QStringList());
}

TEST_F(DropZonePanels, the_first_showing_makes_the_panel_and_brings_it_to_the_front)
{
    DropZonePanelController controller(factory());

    controller.setVisible(true, *m_model);

    EXPECT_EQ(m_calls, QStringList{u"1 front"_s});
}

TEST_F(DropZonePanels, the_same_panel_is_shown_again)
{
    DropZonePanelController controller(factory());

    controller.setVisible(true, *m_model);
    controller.setVisible(true, *m_model);
    controller.setVisible(false, *m_model);
    controller.setVisible(false, *m_model);
    controller.setVisible(true, *m_model);

    EXPECT_EQ(m_calls,
              (QStringList{u"1 front"_s, u"1 front"_s, u"1 out"_s, u"1 out"_s, u"1 front"_s}));
}

TEST_F(DropZonePanels, a_panel_goes_with_what_made_it)
{
    DropZonePanelController controller(factory());
    controller.setVisible(true, *m_model);

    controller.setPanelFactory({});
    controller.setVisible(true, *m_model);

    EXPECT_EQ(m_calls, (QStringList{u"1 front"_s, u"1 gone"_s}));
}
