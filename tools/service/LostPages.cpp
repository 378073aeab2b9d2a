#include "tools/service/LostPages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace marrowbeck::tools {

namespace {

std::uintptr_t pageSize = 4096;

void replacePage(int signal, siginfo_t* info, void* /*context*/) {
    const auto address = reinterpret_cast<std::uintptr_t>(info->si_addr);
    char* const page = static_cast<char*>(info->si_addr) - address % pageSize;
    const bool lost = info->si_code == BUS_ADRERR;
    if (lost && mmap(page, pageSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) == page) return;
    std::signal(signal, SIG_DFL);  // another fault: the instruction runs again and ends the process
}

}  // namespace

LostPagesReadAsZeros::LostPagesReadAsZeros() {
    pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    struct sigaction action {};
    action.sa_sigaction = replacePage;
    action.sa_flags = SA_SIGINFO;
    sigemptyset(&action.sa_mask);
    sigaction(SIGBUS, &action, &previous_);
}

LostPagesReadAsZeros::~LostPagesReadAsZeros() {
    sigaction(SIGBUS, &previous_, nullptr);
}

}  // namespace marrowbeck::tools
