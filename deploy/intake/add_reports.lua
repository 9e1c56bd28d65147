#!lua name=popup_reports

-- Adds reports, three arguments each, as far as the stream has room, and tells of each its number
-- or why it was refused. Nothing is ever cut off from the stream's other end: what stands there was
-- promised to be kept.
redis.register_function('add_reports', function(keys, arguments)
  local room = tonumber(arguments[1]) - redis.call('XLEN', keys[1])
  local answers = {}
  for first = 2, #arguments, 3 do
    local added
    if room > 0 then
      added = redis.pcall('XADD', keys[1], '*', 'path', arguments[first],
                          'parameters', arguments[first + 1], 'body', arguments[first + 2])
      room = room - 1
    else
      added = redis.error_reply('FULL no more reports are taken')
    end
    answers[#answers + 1] = added
  end
  return answers
end)
