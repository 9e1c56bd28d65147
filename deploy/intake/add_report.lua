#!lua name=popup_reports

-- Adds a report to the stream unless that is full. Nothing is ever cut off from the stream's other
-- end: what stands there was promised to be kept. The answer has the request's own name in it, so
-- that the edge knows whose answer it is.
redis.register_function('add_report', function(keys, arguments)
  if redis.call('XLEN', keys[1]) >= tonumber(arguments[1]) then
    return redis.error_reply('FULL no more reports are taken')
  end
  local number = redis.call('XADD', keys[1], '*', 'path', arguments[3],
                            'parameters', arguments[4], 'body', arguments[5])
  return arguments[2] .. ' ' .. number
end)
