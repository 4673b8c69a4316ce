#include "SuiteNode.h"

#include <type_traits>

namespace kv {

static_assert(std::is_trivially_destructible_v<SuiteNode>,
              "suite nodes are statics of a module that must unload without exit-time work");

// The process-wide list: head only, most recently listed first.
struct SuiteList {
    static inline SuiteNode* head = nullptr;
    static inline const ZPBasicSuite* basic = nullptr;

    static void Push(SuiteNode& node) noexcept {
        node.next_ = head;
        head = &node;
    }

    static bool Contains(const SuiteNode& node) noexcept {
        for (const SuiteNode* listed = head; listed != nullptr; listed = listed->next_) {
            if (listed == &node) return true;
        }
        return false;
    }

    static void Release(SuiteNode& node) noexcept {
        if (node.suite_ == nullptr) return;
        if (basic != nullptr) basic->ReleaseSuite(node.name_, node.version_);
        node.suite_ = nullptr;
    }

    // The walk at start-up and reload; see AcquireRegisteredSuites.
    static ResultCode AcquireRegistered() noexcept {
        for (SuiteNode* node = head; node != nullptr; node = node->next_) {
            if (node->registered_ != SuiteNode::kRegistered || node->suite_ != nullptr) continue;
            const void* suite = nullptr;
            if (basic->AcquireSuite(node->name_, node->version_, &suite) == kNoErr) node->suite_ = suite;
            if (node->suite_ != nullptr) continue;
            for (SuiteNode* before = head; before != node; before = before->next_) Release(*before);
            return kSuiteNotFoundErr;
        }
        return kNoErr;
    }

    static const void* AcquireOrThrow(SuiteNode& node) {
        if (node.suite_ != nullptr || basic == nullptr) return node.suite_;
        const void* suite = nullptr;
        ThrowIfError(basic->AcquireSuite(node.name_, node.version_, &suite));
        if (suite == nullptr) throw Contract::Violation("Failed Postcondition");
        node.suite_ = suite;
        // A failed walk releases nodes without taking them off the list, so
        // an on-demand node may still be listed.
        if (node.registered_ == SuiteNode::kOnDemand && !Contains(node)) Push(node);
        return suite;
    }

    static void ReleaseAll() noexcept {
        while (head != nullptr) {
            SuiteNode& node = *head;
            head = node.next_;
            node.next_ = nullptr;
            Release(node);
        }
    }
};

SuiteNode::SuiteNode(const char* name, std::int32_t version, Registration registration) noexcept
    : next_(nullptr), suite_(nullptr), name_(name), version_(version), registered_(registration) {
    if (registered_ == kRegistered) SuiteList::Push(*this);
}

const void* AcquireSuiteOrThrow(SuiteNode& node) { return SuiteList::AcquireOrThrow(node); }

ResultCode AcquireRegisteredSuites(const ZPBasicSuite* basic) noexcept {
    SuiteList::basic = basic;
    if (basic == nullptr) return kSuiteNotFoundErr;
    return SuiteList::AcquireRegistered();
}

void ReleaseAllSuites() noexcept { SuiteList::ReleaseAll(); }

void ListSuite(SuiteNode& node) noexcept {
    if (!SuiteList::Contains(node)) SuiteList::Push(node);
}

const ZPBasicSuite* SuiteListBasicSuite() noexcept { return SuiteList::basic; }

void OfferSuiteListBasicSuite(const ZPBasicSuite* basic) noexcept {
    if (SuiteList::basic == nullptr) SuiteList::basic = basic;
}

}  // namespace kv
