#include "platform/Control.h"
#include "platform/ControlIndex.h"
#include "platform/Form.h"
#include "script/ScriptedPlatform.h"

#include <QTest>

#include <memory>
#include <vector>

using namespace marlet;

class TestControlIndex : public QObject
{
    Q_OBJECT

private:
    ScriptedPlatform m_platform;
    std::unique_ptr<Form> m_form;
    std::vector<std::unique_ptr<Control>> m_controls;

    Control& make(const QString& name, int index = -1)
    {
        m_controls.push_back(std::make_unique<Control>(*m_form, ControlKind::TextBox, name, index));
        return *m_controls.back();
    }

private slots:
    void init()
    {
        m_form = std::make_unique<Form>(m_platform, QStringLiteral("Indexed"));
        m_controls.clear();
    }

    void testANameIsFoundInAnyCase()
    {
        ControlIndex index;
        Control& currency = make(QStringLiteral("txtCurrency"));
        QVERIFY(index.insert(currency));
        QCOMPARE(index.find(u"txtCurrency", -1), &currency);
        QCOMPARE(index.find(u"TXTCURRENCY", -1), &currency);
        QCOMPARE(index.find(u"txtcurrency", -1), &currency);
        QCOMPARE(index.find(u"txtCurrenc", -1), nullptr);
        QCOMPARE(index.find(u"txtCurrencyX", -1), nullptr);
    }

    void testTheIndexTellsArrayElementsApart()
    {
        ControlIndex index;
        Control& plain = make(QStringLiteral("Text7"));
        Control& eighth = make(QStringLiteral("Text7"), 8);
        Control& ninth = make(QStringLiteral("text7"), 9);
        QVERIFY(index.insert(plain));
        QVERIFY(index.insert(eighth));
        QVERIFY(index.insert(ninth));
        QCOMPARE(index.size(), 3);
        QCOMPARE(index.find(u"TEXT7", -1), &plain);
        QCOMPARE(index.find(u"Text7", 8), &eighth);
        QCOMPARE(index.find(u"Text7", 9), &ninth);
        QCOMPARE(index.find(u"Text7", 10), nullptr);
    }

    void testASecondControlOfTheSameNameIsRefused()
    {
        ControlIndex index;
        Control& first = make(QStringLiteral("cmdApply"));
        Control& second = make(QStringLiteral("CMDAPPLY"));
        QVERIFY(index.insert(first));
        QVERIFY(!index.insert(second));
        QCOMPARE(index.size(), 1);
        QCOMPARE(index.find(u"cmdapply", -1), &first);
    }

    void testNamesOutsideAsciiFoldAsQtFoldsThem()
    {
        ControlIndex index;
        Control& size = make(QStringLiteral("lblGröße"));
        QVERIFY(index.insert(size));
        QCOMPARE(index.find(u"LBLGRÖßE", -1), &size);
        QCOMPARE(index.find(u"lblgröße", -1), &size);
        QCOMPARE(index.find(u"lblGrosse", -1), nullptr);
        // The Kelvin sign folds to an ASCII k: the two spellings are one name.
        Control& kelvin = make(QStringLiteral("lbl\u212Aelvin"));
        QVERIFY(index.insert(kelvin));
        QCOMPARE(index.find(u"LBLKELVIN", -1), &kelvin);
        QVERIFY(!index.insert(make(QStringLiteral("lblkelvin"))));
    }

    void testEqualNamesHashAlike_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("same");
        QTest::newRow("cases") << "TabStrip1"
                               << "tabstrip1" << true;
        QTest::newRow("other letters") << "TabStrip1"
                                       << "TabStrip2" << false;
        QTest::newRow("other lengths") << "Text1"
                                       << "Text12" << false;
        QTest::newRow("empty") << ""
                               << "" << true;
        QTest::newRow("umlauts") << "Ärger"
                                 << "äRGER" << true;
        QTest::newRow("Kelvin sign") << "\u212A"
                                     << "K" << true;
        QTest::newRow("not a letter") << "a_1"
                                      << "A_1" << true;
        QTest::newRow("letters next to the alphabet") << "@["
                                                      << "`{" << false;
    }

    void testEqualNamesHashAlike()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(bool, same);
        QCOMPARE(ControlIndex::sameName(a, b), same);
        QCOMPARE(ControlIndex::sameName(b, a), same);
        QCOMPARE(ControlIndex::sameName(a, b), a.toCaseFolded() == b.toCaseFolded());
        if (same)
            QCOMPARE(ControlIndex::hashName(a, 7), ControlIndex::hashName(b, 7));
    }

    void testAGrowingIndexKeepsEveryControl()
    {
        ControlIndex index;
        for (int i = 0; i < 1000; ++i) {
            QVERIFY(index.insert(make(QStringLiteral("Text"), i)));
            QVERIFY(index.insert(make(QStringLiteral("Label") + QString::number(i))));
        }
        QCOMPARE(index.size(), 2000);
        for (int i = 0; i < 1000; ++i) {
            QCOMPARE(index.find(u"TEXT", i)->index(), i);
            QCOMPARE(index.find(QString(QStringLiteral("label") + QString::number(i)), -1)->name(),
                QStringLiteral("Label") + QString::number(i));
        }
        QCOMPARE(index.find(u"Text", 1000), nullptr);
        QVERIFY(!index.insert(make(QStringLiteral("text"), 999)));
    }

    void testNamesThatOnlyHashAlikeStayApart()
    {
        // "@" and "`" differ by the bit that tells capitals apart, but neither is a letter.
        ControlIndex index;
        Control& at = make(QStringLiteral("cmd@"));
        Control& grave = make(QStringLiteral("cmd`"));
        QVERIFY(index.insert(at));
        QVERIFY(index.insert(grave));
        QCOMPARE(index.find(u"CMD@", -1), &at);
        QCOMPARE(index.find(u"CMD`", -1), &grave);
    }

    void testClearingForgetsEveryControl()
    {
        ControlIndex index;
        QVERIFY(index.insert(make(QStringLiteral("Text1"))));
        index.clear();
        QCOMPARE(index.size(), 0);
        QCOMPARE(index.find(u"Text1", -1), nullptr);
        QVERIFY(index.insert(make(QStringLiteral("Text1"))));
    }
};

QTEST_GUILESS_MAIN(TestControlIndex)
#include "TestControlIndex.moc"
