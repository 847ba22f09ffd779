// MultibytePage.cpp: selection of the multibyte code page.
#include <kelgen/platform/posix/nls/MultibytePage.h>

#include <atomic>
#include <mutex>

namespace kelgen::posix {

namespace {

// Every page that was ever selected, so that readers need no lock; they are few and never freed.
struct SelectedPage
{
    MultibytePage page;
    const SelectedPage* next;
};

std::atomic<const SelectedPage*> selectedPage{nullptr};

const SelectedPage* Select(UINT number)
{
    static std::mutex selecting;
    static const SelectedPage* first = nullptr;

    const std::lock_guard lock(selecting);
    const SelectedPage* page = first;
    while (page && page->page.number != number)
        page = page->next;
    if (!page) {
        const bool hasTable = number != CP_UTF8 && number != CP_UTF7;
        page = first = new SelectedPage{{number, hasTable ? CodePage::Find(number) : nullptr}, first};
    }
    selectedPage.store(page, std::memory_order_release);
    return page;
}

}  // namespace

const MultibytePage& CurrentMultibytePage()
{
    const SelectedPage* page = selectedPage.load(std::memory_order_acquire);
    return (page ? page : Select(GetACP()))->page;
}

void SelectMultibytePage(UINT number)
{
    Select(number);
}

}  // namespace kelgen::posix
