#include "RKSVGRendererFactory.h"

#include "RKSVGComposition.h"

#include <RKFileEncoder.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QSvgRenderer>
#include <QThread>

namespace {
QSvgRenderer* adopted(QSvgRenderer* renderer)
{
    const QCoreApplication* application = QCoreApplication::instance();
    if (application && application->thread() != QThread::currentThread())
        renderer->moveToThread(application->thread());
    return renderer;
}
}

QSvgRenderer* RKSVGRendererFactory::createRenderer(const RKSVGComposition& composition)
{
    return adopted(new QSvgRenderer(composition.compileAsByteArray()));
}

QSvgRenderer* RKSVGRendererFactory::createRenderer(const QFileInfo& file)
{
    return adopted(new QSvgRenderer(RKFileEncoder::encodeAndCopyCLP(file)));
}
