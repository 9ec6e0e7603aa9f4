#include "counting_com.h"

#include "platform/windows/cim/com_text.h"

#include <comdef.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cwchar>
#include <new>
#include <optional>
#include <string>

namespace {

bool heapRefuses = false;

} // namespace

// The process's own heap, which can run out on demand.
void* operator new(std::size_t size) {
    void* memory = heapRefuses ? nullptr : std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using vexil::platform::ComText;

/// The heap has nothing left for as long as this lives.
class EmptyHeap {
public:
    EmptyHeap() { heapRefuses = true; }
    ~EmptyHeap() { heapRefuses = false; }
};

/// As COM gives texts, and nothing else.
class Com final : public vexil::tests::CountingCom {
public:
    HRESULT createInstance(REFCLSID, IUnknown*, DWORD, REFIID, void**) override { return E_NOTIMPL; }
    HRESULT setProxyBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD, RPC_AUTH_IDENTITY_HANDLE,
                            DWORD) override {
        return E_NOTIMPL;
    }
};

TEST(ComText, WidensByTheProcessesCodePage) {
    Com com;
    wchar_t expected[8] = {};
    const char* narrow = "a\xE9";
    const int length = MultiByteToWideChar(CP_ACP, 0, narrow, 2, expected, 8);
    const ComText text(com, narrow);
    ASSERT_EQ(SysStringLen(text.get()), static_cast<UINT>(length));
    EXPECT_EQ(std::wcscmp(text.get(), expected), 0);
    const ComText empty(com, "");
    ASSERT_NE(empty.get(), nullptr);
    EXPECT_EQ(SysStringLen(empty.get()), 0U);
    EXPECT_EQ(ComText(com, static_cast<const char*>(nullptr)).get(), nullptr);
}

TEST(ComText, TakesNoMemoryButComs) {
    Com com;
    const std::string narrow(100, 'x');
    std::optional<ComText> text;
    {
        const EmptyHeap empty;
        text.emplace(com, narrow.c_str());
    }
    EXPECT_EQ(std::wstring(text->get()), std::wstring(100, L'x'));
}

TEST(ComText, RaisesOutOfMemoryWhereComHasNone) {
    Com com;
    com.refusedText = 1;
    const std::string narrow(100, 'x');
    try {
        const ComText text(com, narrow.c_str());
        ADD_FAILURE() << "nothing was raised";
    } catch (const _com_error& error) {
        EXPECT_EQ(static_cast<unsigned long>(error.Error()), 0x8007000EUL);
    }
    EXPECT_EQ(com.textsAlive, 0);
}

} // namespace
