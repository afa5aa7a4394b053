#include "companion/server/Greeting.h"

namespace lumora::companion {

namespace {

constexpr auto page = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta name="color-scheme" content="light dark">
<title>lumora-service</title>
</head>
<body>
<h1>lumora-service</h1>
<p>This service makes the day that Lumora shows in your status area. It is at work, and answers
Lumora alone: there is no more to see here.</p>
<p>What it makes the day of stands in <code>~/.config/lumora/service.toml</code>. How each source
stands says <code>lumora-service check</code> in a terminal.</p>
</body>
</html>
)";

} // namespace

HttpAnswer greeting(bool headOnly) {
    return {
        .status = 200,
        .body = page,
        .allow = {},
        .headOnly = headOnly,
        .type = "text/html; charset=utf-8"};
}

} // namespace lumora::companion
