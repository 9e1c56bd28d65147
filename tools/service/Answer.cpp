#include "service/Answer.h"

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

namespace zovk::service {

Answer jsonAnswer(const boost::json::value& value, int status) {
  Answer answer;
  answer.status = status;
  answer.body = boost::json::serialize(value) + "\n";
  answer.headers.emplace_back("Cache-Control", "no-store");
  return answer;
}

Answer problem(int status, std::string_view message) {
  return jsonAnswer(boost::json::object{{"code", status}, {"message", message}}, status);
}

}  // namespace zovk::service
