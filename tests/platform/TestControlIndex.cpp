#include "platform/Control.h"
#include "platform/ControlIndex.h"
#include "platform/Form.h"
#include "script/ScriptedPlatform.h"

#include <QTest>

#include <initializer_list>
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

    // Each spelling of the name, with that index, finds the control (or nothing).
    static void verifyFinds(const ControlIndex& index,
        std::initializer_list<const char16_t*> spellings,
        int element,
        const Control* expected)
    {
        for (const char16_t* spelling : spellings)
            QCOMPARE(index.find(spelling, element), expected);
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
        verifyFinds(index, {u"txtCurrency", u"TXTCURRENCY", u"txtcurrency"}, -1, &currency);
        verifyFinds(index, {u"txtCurrenc", u"txtCurrencyX"}, -1, nullptr);
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
        verifyFinds(index, {u"LBLGRÖßE", u"lblgröße"}, -1, &size);
        verifyFinds(index, {u"lblGrosse"}, -1, nullptr);
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
        const struct
        {
            const char* tag;
            QString a;
            QString b;
            bool same;
        } rows[] = {
            {"cases", QStringLiteral("TabStrip1"), QStringLiteral("tabstrip1"), true},
            {"other letters", QStringLiteral("TabStrip1"), QStringLiteral("TabStrip2"), false},
            {"other lengths", QStringLiteral("Text1"), QStringLiteral("Text12"), false},
            {"empty", QString(), QString(), true},
            {"umlauts", QStringLiteral("Ärger"), QStringLiteral("äRGER"), true},
            {"Kelvin sign", QStringLiteral("\u212A"), QStringLiteral("K"), true},
            {"not a letter", QStringLiteral("a_1"), QStringLiteral("A_1"), true},
            {"letters next to the alphabet", QStringLiteral("@["), QStringLiteral("`{"), false},
        };
        for (const auto& row : rows)
            QTest::newRow(row.tag) << row.a << row.b << row.same;
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
