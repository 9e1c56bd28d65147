-- Starts of games that have their pages: the document, and each page with its validator. The list
-- of addresses and validators is made by measure.py; each start is another installation's.
local requests, number, start = {}, 0, 0

function init(arguments)
  for line in io.lines(arguments[1]) do
    local path, tag = line:match("^(%S+) (%S*)$")
    requests[#requests + 1] = {path = path, tag = tag}
  end
end

function request()
  number = number % #requests + 1
  local one = requests[number]
  if one.tag ~= "" then return wrk.format("GET", one.path, {["If-None-Match"] = one.tag}) end
  start = start + 1
  return wrk.format("GET", string.format(
      "%s?game_id=1001&install_id=%08X-8B86-D011-B42D-00CF4FC964FF&os=2&version=1.0.0" ..
      "&sig=0123456789abcdef0123456789abcdef", one.path, start))
end
