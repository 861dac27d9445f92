// SPDX-License-Identifier: MIT
#include "gl/BarShaders.h"
#include "gl/CoreProfile.h"
#include "gl/DecoratorShaders.h"
#include "plotters/SAreaGradientProgram.h"

#include <QtTest>

class tst_CoreProfile : public QObject
{
    Q_OBJECT

private slots:
    void aSourceThatNamesItsVersionStaysAsItIs();
    void anOlderSourceFollowsWhatGivesItsWordsAMeaning();
};

void tst_CoreProfile::aSourceThatNamesItsVersionStaysAsItIs()
{
    for (const auto &stage : decoratorShaderSources(DecoratorDialect::ByLocation))
        QCOMPARE(coreProfileSource(stage.first, stage.second), stage.second);
    for (const auto &stage : barShaderSources(BarGeometryShader))
        QCOMPARE(coreProfileSource(stage.first, stage.second), stage.second);
}

void tst_CoreProfile::anOlderSourceFollowsWhatGivesItsWordsAMeaning()
{
    const auto stages = SAreaGradientProgram().sources();
    QCOMPARE(stages.size(), 2);
    const QString vertex = coreProfileSource(stages.at(0).first, stages.at(0).second);
    const QString fragment = coreProfileSource(stages.at(1).first, stages.at(1).second);
    QVERIFY(vertex.startsWith("#version 150\n"));
    QVERIFY(vertex.contains("#define attribute in\n"));
    QVERIFY(vertex.contains("#define varying out\n"));
    QVERIFY(vertex.endsWith('\n' + stages.at(0).second));
    QVERIFY(fragment.startsWith("#version 150\n"));
    QVERIFY(fragment.contains("#define varying in\n"));
    QVERIFY(fragment.contains("out vec4 fragmentColor;\n"));
    QVERIFY(fragment.endsWith('\n' + stages.at(1).second));
}

QTEST_MAIN(tst_CoreProfile)
#include "tst_CoreProfile.moc"
