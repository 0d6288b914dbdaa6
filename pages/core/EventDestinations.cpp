// Loads and saves the destinations of events.
#include "pages/core/EventDestinations.h"

#include "pages/core/HostAgentParameters.h"

namespace {

BYTE Combine(BYTE character, std::size_t index)
{
    return static_cast<BYTE>(character ^ (index + 32));
}

std::string LoadPassword(CRegistryKey& parameters)
{
    RegistryData data;
    DWORD size = 0;
    if (RequireMemory(parameters.GetBinary(passwordValue, data, size)) != ERROR_SUCCESS || data == nullptr)
        return {};
    return DescramblePassword({data.get(), size});
}

} // namespace

std::vector<BYTE> ScramblePassword(const std::string& password)
{
    std::vector<BYTE> stored;
    for (const char character : password)
        stored.push_back(Combine(static_cast<BYTE>(character), stored.size()));
    stored.push_back(0);
    return stored;
}

std::string DescramblePassword(std::span<const BYTE> stored)
{
    std::string password;
    for (const BYTE scrambled : stored) {
        const BYTE character = Combine(scrambled, password.size());
        if (scrambled == 0 || character == 0)
            break;
        password.push_back(static_cast<char>(character));
    }
    return password;
}

void EventDestinations::Load()
{
    CRegistryKey parameters = HostAgentParameters();
    computers.clear();
    parameters.ReadList(computersValue, computers);
    RequireMemory(parameters.GetString(userNameValue, userName, REG_SZ, 0));
    password = LoadPassword(parameters);
}

void EventDestinations::Save(DWORD changes) const
{
    CRegistryKey parameters = HostAgentParameters();
    if ((changes & ComputersChanged) != 0)
        parameters.SetMultiString(computersValue, computers);
    if ((changes & UserNameChanged) != 0)
        parameters.SetString(userNameValue, userName);
    if ((changes & PasswordChanged) != 0) {
        const std::vector<BYTE> stored = ScramblePassword(password);
        parameters.SetBinary(passwordValue, stored.data(), static_cast<DWORD>(stored.size()));
    }
}
