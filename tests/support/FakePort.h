#pragma once

#include "link/SPortAx.h"

namespace kalmo::tests {

/// A serial port of memory: open from the start, with buffers that only remember their size.
class FakePort : public link::SPortAx
{
public:
    bool IsOpen() const override { return m_open; }
    int InBufferSize() const override { return m_inBufferSize; }
    void SetInBufferSize(int bytes) override { m_inBufferSize = bytes; }
    int OutBufferSize() const override { return m_outBufferSize; }
    void SetOutBufferSize(int bytes) override { m_outBufferSize = bytes; }
    void SetControlLines(bool) override {}

protected:
    bool m_open = true;

private:
    int m_inBufferSize = link::inBufferSize;
    int m_outBufferSize = link::outBufferSize;
};

} // namespace kalmo::tests
