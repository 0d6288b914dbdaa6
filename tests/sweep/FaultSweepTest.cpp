// Lets every call of Windows that can fail do so, one at a time, in everything that the applet does, and
// checks that the user learns of it where needed and nothing is lost or left behind. A sample runs each
// time; all cases with VTN_THOROUGH in the environment.
#include "machine/WatchedImports.h"
#include "resources/resource.h"
#include "sweep/Expectation.h"
#include "sweep/Sample.h"

#include <algorithm>
#include <cstdio>

namespace {

using namespace sweep;

constexpr std::size_t sampleSize = 4; // cases of each operation

// Beginning of a text of the string table, up to the first line's end or insert.
std::string FirstLine(const std::string& text)
{
    return text.substr(0, text.find_first_of("\n%\""));
}

std::string Text(HMODULE module, UINT id)
{
    std::array<char, 512> text{};
    LoadStringA(module, id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::vector<Fault> AllFaults(const std::vector<Call>& calls)
{
    const auto codes = WatchedImports::Codes();
    std::vector<Fault> faults;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        for (const DWORD code : codes.at(calls[i].function))
            faults.push_back({i + 1, code});
    }
    return faults;
}

// Compares one case with the run that had no fault.
class Comparison
{
  public:
    Comparison(const Operation& operation, const Outcome& reference, const Outcome& found, const Fault& fault,
               HMODULE module)
        : m_operation(operation), m_reference(reference), m_found(found), m_fault(fault),
          m_call(reference.calls[fault.call - 1]), m_expected(Expected(operation, reference.calls, fault)),
          m_module(module)
    {
    }

    void Check() const
    {
        ASSERT_GE(m_found.calls.size(), m_fault.call) << "the call was not made";
        EXPECT_EQ(m_found.calls[m_fault.call - 1].function, m_call.function);
        EXPECT_EQ(m_found.calls[m_fault.call - 1].place, m_call.place);
        EXPECT_EQ(m_found.thrown, "");
        EXPECT_EQ(m_found.windowsLeft, 0U);
        CheckBoxes();
        CheckChanges();
        CheckContents();
        CheckHandles();
        CheckSecondTry();
    }

  private:
    [[nodiscard]] bool GoesOn() const
    {
        return m_expected.ending != Ending::Ends && m_expected.ending != Ending::EndsWith;
    }

    void CheckBoxes() const
    {
        std::vector<std::string> expected;
        const std::size_t count = GoesOn() ? m_reference.boxes.size() : m_call.boxes;
        for (std::size_t i = 0; i < count; ++i)
            expected.push_back(FirstLine(m_reference.boxes[i]));
        const auto place = [&](std::size_t boxes) {
            return expected.begin() + static_cast<std::ptrdiff_t>(boxes);
        };
        const bool isAdded = m_expected.text != 0 && m_expected.ending != Ending::Replaces;
        if (m_expected.boxOfSnmp)
            expected.insert(place(*m_expected.boxOfSnmp), FirstLine(Text(m_module, IDS_CANNOT_STOP)));
        if (isAdded)
            expected.insert(place(m_call.boxes), FirstLine(Text(m_module, m_expected.text)));
        else if (m_expected.text != 0)
            *place(m_call.boxes) = FirstLine(Text(m_module, m_expected.text));
        ASSERT_EQ(m_found.boxes.size(), expected.size()) << testing::PrintToString(m_found.boxes);
        for (std::size_t i = 0; i < expected.size() && m_call.function != "LoadStringA"; ++i)
            EXPECT_TRUE(m_found.boxes[i].starts_with(expected[i]))
                << m_found.boxes[i] << "\ninstead of: " << expected[i];
    }

    // A default may have taken the place of what was to be written.
    [[nodiscard]] bool IsSame(const Call& expected, const Call& found) const
    {
        const bool isPlace = m_expected.changesContents ? expected.place.starts_with(found.place)
                                                        : expected.place == found.place;
        return isPlace && expected.function == found.function;
    }

    // A file that only seems to be read-only is made writable, which changes nothing.
    [[nodiscard]] bool IsChange(const Call& call) const
    {
        const bool isMadeWritable =
            call.function == "_chmod" && m_call.function == "_access" && call.place == m_call.place;
        return call.role == Role::Changes && !isMadeWritable;
    }

    // What was changed is what the run without a fault changes, up to the failed call or, when the operation
    // goes on, without what the call was needed for.
    void CheckChanges() const
    {
        auto found = m_found.calls.begin();
        const auto next = [&] {
            found =
                std::find_if(found, m_found.calls.end(), [this](const Call& call) { return IsChange(call); });
            return found;
        };
        for (std::size_t i = 0; i < m_reference.calls.size(); ++i) {
            const Call& call = m_reference.calls[i];
            if (!IsChange(call) || (!GoesOn() && i >= m_fault.call))
                continue;
            if (next() != m_found.calls.end() && IsSame(call, *found))
                ++found;
            else
                EXPECT_TRUE(GoesOn() && MayBeMissing(m_reference.calls, m_fault, call))
                    << "not done: " << call.function << ' ' << call.place;
        }
        while (next() != m_found.calls.end()) {
            EXPECT_TRUE(found->function == "DeleteFileA" && found->place == m_call.place)
                << "done beyond: " << found->function << ' ' << found->place;
            ++found;
        }
    }

    // Whether the run without a fault writes this registry value, or configures this service.
    [[nodiscard]] bool IsWritten(const std::string& item) const
    {
        return std::ranges::any_of(m_reference.calls, [&](const Call& call) {
            return call.role == Role::Changes &&
                   (call.place == "HKLM, " + item ||
                    item.starts_with("service " + call.place.substr(0, call.place.find(','))));
        });
    }

    void CheckContents() const
    {
        for (const auto& [item, contents] : m_reference.seen) {
            const auto now = m_found.after.find(item);
            const std::string content = now == m_found.after.end() ? "" : now->second;
            const bool isOpen = m_expected.changesContents && IsWritten(item);
            const bool isDeleted = content.empty() && item == m_call.place;
            EXPECT_TRUE(isOpen || isDeleted || contents.contains(content)) << item << " is now: " << content;
        }
        for (const auto& [item, content] : m_found.after)
            EXPECT_TRUE(m_reference.seen.contains(item)) << "made: " << item;
    }

    void CheckHandles() const
    {
        std::vector<std::string> expected;
        if (m_expected.keepsOpen)
            expected.push_back(m_call.place.substr(0, m_call.place.rfind(", ")));
        EXPECT_EQ(m_found.leftOpen, expected);
    }

    // A user who heard of the failure does it again.
    void CheckSecondTry() const
    {
        if (!m_operation.settles || m_expected.ending != Ending::EndsWith)
            return;
        Picture settled = m_found.settled;
        for (const auto& [item, content] : m_reference.after)
            EXPECT_EQ(settled[item], content) << item << ", after a second try";
        EXPECT_EQ(settled.size(), m_reference.after.size());
    }

    const Operation& m_operation;
    const Outcome& m_reference;
    const Outcome& m_found;
    const Fault& m_fault;
    const Call& m_call;
    Expectation m_expected;
    HMODULE m_module;
};

class FaultSweep : public testing::TestWithParam<Operation>
{
  protected:
    Subject m_subject;
};

TEST_P(FaultSweep, InformsTheUserAndLeavesNothingHalfDone)
{
    const Operation& operation = GetParam();
    const Outcome reference = Perform(m_subject, operation, {}, true);
    ASSERT_EQ(reference.thrown, "");
    ASSERT_TRUE(reference.leftOpen.empty());
    const std::vector<Fault> faults = AllFaults(reference.calls);
    const std::vector<Fault> sample = Sampled(faults, sampleSize);
    for (const Fault& fault : sample) {
        const Call& call = reference.calls[fault.call - 1];
        SCOPED_TRACE(std::string(operation.name) + ", call " + std::to_string(fault.call) + " fails with " +
                     std::to_string(fault.code) + ": " + call.function + " " + call.place);
        const Outcome found = Perform(m_subject, operation, fault);
        Comparison(operation, reference, found, fault, m_subject.host.Module()).Check();
    }
    std::printf("%s: %zu calls, failed in %zu of %zu ways\n", operation.name, reference.calls.size(),
                sample.size(), faults.size());
}

INSTANTIATE_TEST_SUITE_P(Operations, FaultSweep, testing::ValuesIn(Operations().begin(), Operations().end()),
                         NameOfOperation);

} // namespace
