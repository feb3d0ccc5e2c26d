#ifndef BENCH_BENCHSUPPORT_H
#define BENCH_BENCHSUPPORT_H

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <algorithm>
#include <functional>
#include <vector>

// Small pieces the benchmarks share.
namespace BenchSupport {

// Notes that the widget it filters has been painted (after a show(), say).
class PaintWatch : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == QEvent::Paint)
            painted = true;
        return false;
    }
};

inline void processUntil(const std::function<bool()>& done)
{
    for (int i = 0; i < 100000 && !done(); ++i)
        QCoreApplication::processEvents();
}

inline double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

} // namespace BenchSupport

#endif // BENCH_BENCHSUPPORT_H
