// A sheet of three pages, for the tests of sheets and of pages.
#pragma once

#include "TestDialogs.h"

#include <gtest/gtest.h>

struct SheetTest : testing::Test
{
    void SetUp() override
    {
        sheet.AddPage(&first);
        sheet.AddPage(&second);
        sheet.AddPage(&third);
    }

    // Runs the sheet with `step` as what its user does.
    INT_PTR Run(const std::function<void()>& step)
    {
        sheet.m_step = step;
        return sheet.DoModal();
    }

    Log log;
    CTestPage first{IDD_PAGE1, log, "first"};
    CTestPage second{IDD_PAGE2, log, "second"};
    CTestPage third{IDD_PAGE3, log, "third"};
    CTestSheet sheet;
};
