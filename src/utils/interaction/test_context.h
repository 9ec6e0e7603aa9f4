#pragma once

/// How code that shows widgets learns that its test was stopped.
class TestContext;
